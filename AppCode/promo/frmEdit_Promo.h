#pragma once
#include "common/Money.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace qln {

// The dialog in which one item promo is added or changed. The caller sets the properties,
// shows it, reads mbCancelled and deletes it; the dialog writes the row itself and flags
// the item (gInventory) as being on promo.
class frmEdit_Promo final : public QDialog {
public:
    static constexpr int kModeAdd = 0, kModeChange = 1, kModeReadBack = 2;

    explicit frmEdit_Promo(QWidget *parent = nullptr);

    int miMode = kModeAdd;
    QString msDescription;
    QString msSL;
    QString msListPrice;
    QString msCost;
    QString msPromoPrice;
    QString msStart;
    QString msEnd;
    bool mbCancelled = true; // only Accept clears it

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void mpForm_load();
    void mpOption_choose(int option);
    void mpAccept_state();
    void mpAmount_enter();
    void cmdAccept_Click();
    void cmdCalendar_Click();
    bool mfbValidate();
    bool mfbValidate_fail(int box, const QString &sFirst, const QString &sSecond);
    bool mfbSave();
    void mpMargin_show();
    void mpPromo_price_show(int iBox);
    int mfiOption() const;

    bool mbLoaded = false;
    QLabel *lblItem[5] = {};
    QLabel *lblEdit[9] = {};
    QLineEdit *txtEdit[6] = {};
    QRadioButton *Option1[3] = {};
    QPushButton *cmdAcceptCancel[2] = {};
    QPushButton *cmdCalendar = nullptr;
    QPushButton *cmdHelp = nullptr;
};

} // namespace qln
