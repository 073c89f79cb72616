#pragma once
#include <QDate>
#include <QDialog>

class QGroupBox;
class QLabel;
class QPushButton;

namespace qln {

class FlexGrid;

// The store-wide percentages for ranges of days: list, add, change, delete. Each daily promo
// is one row of PromoPrices with a negative GroupID and no item or department.
class FrmDailyPromo final : public QDialog {
public:
    explicit FrmDailyPromo(QWidget *parent = nullptr);
    ~FrmDailyPromo() override;

    // True while a daily promos window is loaded: the group promo editor then takes its daily
    // form.
    static bool mbDailyMode();

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void mpControls_create();
    void mpControls_arrange();
    void mpForm_load();
    void mpForm_activate();

    void mpGrid_layout();
    void mpDaily_list_fill();
    bool mfbEditor_run();
    bool mfbRow_keys_read(int row, QDate &end, qint32 &groupId);

    void mpPromo_add();
    void mpPromo_change();
    void mpPromo_delete();

    QLabel *Label1 = nullptr;
    QLabel *LblTraining = nullptr;
    QGroupBox *Frame1 = nullptr;
    QPushButton *cmdEdit[3] = {};
    QPushButton *cmdPurge = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdQuit = nullptr;
    FlexGrid *fgrdItems = nullptr;

    bool mbHasRows = false;
};

} // namespace qln
