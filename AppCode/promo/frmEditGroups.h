#pragma once
#include "promo/PromoGroups.h"

#include <QDialog>

class QPushButton;

namespace qln {

class FlexGrid;

// The list of promo groups in Groups.QLN: add, rename and delete entries. Deleting a group
// removes its promo rows too.
class frmEditGroups final : public QDialog {
public:
    explicit frmEditGroups(QWidget *parent = nullptr);

private:
    void mpGrid_reset();
    void mpGroups_load();
    void mpGroup_add();
    void mpGroup_change();
    void mpGroup_delete();
    void mpGroups_save();
    QList<PromoGroup> mfaGrid_groups() const;
    void mpGrid_fill(const QList<PromoGroup> &groups);

    FlexGrid *fgrdItems = nullptr;
    QPushButton *cmdEdit[3] = {};
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdHelp = nullptr;
    QPushButton *cmdQuit = nullptr;

    bool mbHasGroups = false; // a group was read or added; deleting the last keeps it
    QString msGroupCodes;
};

} // namespace qln
