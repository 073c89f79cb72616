#pragma once
#include <QDialog>
#include <QList>
#include <QStringList>
#include <array>

class QLineEdit;
class QPushButton;

namespace qln {

class FlexGrid;

// The lookup that reads its whole result at once, then filters and sorts it in the grid: for
// bounded results only (every department, the items of one vendor); a table of any size is
// for the record lookup. Mode 0 lists departments and hands back the chosen code in
// sLookupResult; mode 5 lists items, of one vendor or of all ("OPEN", "Manual"), and hands
// back every row given a quantity in gaLookupEntries. The vendor modes read the purchasing
// program's tables, which may not be there: mode 1 the vendors of the item whose record number
// is sVendor, mode 3 every vendor (both hand back the chosen vendor code), mode 2 the items of
// the AP code sVendor (quantities, as mode 5). Cancel leaves both results empty.
class frmDataLookup final : public QDialog {
public:
    explicit frmDataLookup(int iMode, const QString &sVendor = QString(), QWidget *parent = nullptr);

    QString sLookupResult;

protected:
    void showEvent(QShowEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void reject() override;

private:
    void mpControls_make();
    void mpFill();
    void mpColumns_set();
    void Text1_Change();
    void mpSort_set(int col);
    void mpEntry_open(const QString &typed = QString());
    bool mfbEntry_close(bool keep);
    void CmdAccept_Click();
    int mfiMatch(const QString &text) const;

    int iMode;
    QString m_vendor;
    int iSortCol = 1;
    bool m_filled = false;
    FlexGrid *fgrdItems = nullptr;
    QLineEdit *Text1 = nullptr, *txtText = nullptr;
    std::array<QPushButton *, 2> CmdAcceptCancel{};
    QPushButton *CmdAltVendor = nullptr, *CmdAltitems = nullptr, *cmdClear = nullptr;
};

} // namespace qln
