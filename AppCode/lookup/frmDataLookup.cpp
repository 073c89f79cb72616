#include "lookup/frmDataLookup.h"

#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ItemNumber.h"
#include "lookup/DataGridState.h"
#include "lookup/DataLookupRows.h"
#include "lookup/FGrid.h"
#include "lookup/FlexGrid.h"
#include "platform/Messages.h"
#include "store/Database.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace qln {

namespace {

constexpr int kQtyCol = 0;
constexpr int kSortAscending = 1;

// The modes whose first column takes quantities, and where their SL stands.
bool mfbEntryMode(int iMode) { return iMode == kLookupItems || iMode == kLookupVendorItems; }
int mfiSLCol(int iMode) { return iMode == kLookupItems ? 5 : 2; }

QString withoutPoint(QString text) { return text.remove(QLatin1Char('.')).trimmed(); }

} // namespace

frmDataLookup::frmDataLookup(int mode, const QString &sVendor, QWidget *parent)
    : QDialog(parent), iMode(mode), m_vendor(sVendor)
{
    setObjectName(QStringLiteral("frmDataLookup"));
    setWindowTitle(QStringLiteral("Data Lookup"));
    gaLookupEntries.clear();
    mpControls_make();
    mpColumns_set();
    gpFont_normalise(this);
    gpFormKeys_install(this, CmdAcceptCancel[1]);
    resize(gfiTwips_toPixels(fgrdItems->Width(), this) + 40, 520);
}

void frmDataLookup::mpControls_make()
{
    auto *layout = new QVBoxLayout(this);
    auto *criteria = new QHBoxLayout;
    criteria->addWidget(gfForm_label(this, QStringLiteral("lblText1"), QStringLiteral("Lookup Criteria")));
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    criteria->addWidget(Text1, 1);
    cmdClear = gfCommand_button(this, QStringLiteral("cmdClear"), QStringLiteral("Clear"));
    criteria->addWidget(cmdClear);
    layout->addLayout(criteria);

    fgrdItems = new FlexGrid(this);
    fgrdItems->setObjectName(QStringLiteral("fgrdItems"));
    layout->addWidget(fgrdItems, 1);
    txtText = new QLineEdit(fgrdItems);
    txtText->setObjectName(QStringLiteral("txtText"));
    txtText->hide();

    auto *buttons = new QHBoxLayout;
    CmdAltVendor = gfCommand_button(this, QStringLiteral("CmdAltVendor"), QStringLiteral("Alternate Vendor"));
    CmdAltVendor->setToolTip(QStringLiteral("Other Vendors from whom this item can be purchased"));
    CmdAltitems = gfCommand_button(this, QStringLiteral("CmdAltitems"), QStringLiteral("Alternate Item"));
    // The vendors of an item are the purchasing program's; this one has no vendor table.
    CmdAltVendor->hide();
    CmdAltitems->hide();
    CmdAcceptCancel[0] = gfCommand_button(this, QStringLiteral("CmdAcceptCancel(0)"), QStringLiteral("F10 Accept"));
    CmdAcceptCancel[1] = gfCommand_button(this, QStringLiteral("CmdAcceptCancel(1)"), QStringLiteral("Esc Cancel"));
    buttons->addWidget(CmdAltVendor);
    buttons->addWidget(CmdAltitems);
    buttons->addStretch(1);
    buttons->addWidget(CmdAcceptCancel[0]);
    buttons->addWidget(CmdAcceptCancel[1]);
    layout->addLayout(buttons);

    connect(Text1, &QLineEdit::textChanged, this, &frmDataLookup::Text1_Change);
    connect(cmdClear, &QPushButton::clicked, this, [this] {
        Text1->clear();
        Text1->setFocus();
    });
    connect(CmdAcceptCancel[0], &QPushButton::clicked, this, &frmDataLookup::CmdAccept_Click);
    connect(CmdAcceptCancel[1], &QPushButton::clicked, this, &frmDataLookup::reject);
    connect(fgrdItems, &FlexGrid::cellClicked, this, [this](int row, int col) {
        if (row == 0)
            mpSort_set(col);
    });
    connect(fgrdItems, &FlexGrid::cellDoubleClicked, this, [this](int row, int) {
        if (row < 1)
            return;
        if (mfbEntryMode(iMode))
            mpEntry_open();
        else
            CmdAccept_Click();
    });
    for (QObject *watched : std::initializer_list<QObject *>{Text1, txtText, fgrdItems->view()})
        watched->installEventFilter(this);
}

void frmDataLookup::mpColumns_set()
{
    const QList<DataLookupColumn> columns = gfaDataLookup_Columns(iMode, m_vendor);
    fgrdItems->setRedraw(false);
    fgrdItems->setRows(1);
    fgrdItems->setCols(int(columns.size()));
    int width = 0;
    for (int col = 0; col < columns.size(); ++col) {
        fgrdItems->setColWidth(col, columns[col].lWidth);
        fgrdItems->setColAlignment(col, columns[col].iAlign);
        fgrdItems->setTextMatrix(0, col, columns[col].sHeader);
        width += columns[col].lWidth;
    }
    fgrdItems->setWidth(width + 300);
    fgrdItems->setRedraw(true);
    iSortCol = mfbEntryMode(iMode) ? 1 : 0;
}

void frmDataLookup::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (m_filled)
        return;
    m_filled = true;
    mpFill();
    Text1->setFocus();
}

void frmDataLookup::mpFill()
{
    QList<QStringList> rows;
    const QString foreign = gfsDataLookup_ForeignTable(iMode);
    if (!foreign.isEmpty() && !gfbDB_TableExists(foreign)) {
        gfiMsgBox(QStringLiteral("The table %1 is not in this database: the vendor lists belong to the purchasing program.")
                      .arg(foreign),
                  MsgButtons::OK, MsgIcon::Information, QStringLiteral("Data Lookup"));
        return;
    }
    const bool found = iMode == kLookupItems         ? gfbDataLookup_Items(m_vendor, rows)
                       : iMode == kLookupDepartments ? gfbDataLookup_Departments(rows)
                                                     : gfbDataLookup_Vendors(iMode, m_vendor, rows);
    fgrdItems->setRedraw(false);
    fgrdItems->setRows(int(rows.size()) + 1);
    for (int r = 0; r < rows.size(); ++r) {
        const QStringList &cells = rows[r];
        for (int c = 0; c < cells.size(); ++c)
            fgrdItems->setTextMatrix(r + 1, c, cells[c]);
    }
    fgrdItems->setRedraw(true);
    if (!found) {
        if (iMode == kLookupItems)
            gfiMsgBox(QStringLiteral("No matching Items found"));
        return;
    }
    gpGrid_SortColumn(*fgrdItems, iSortCol, kSortAscending);
    gpGrid_HeaderHighlight(*fgrdItems, iSortCol);
    fgrdItems->setRow(1);
    gpGrid_ShowRow(*fgrdItems, fgrdItems->Cols() - 1);
    if (gfiGrid_TotalWidth(*fgrdItems) > 100)
        gpGrid_FitColumns(*fgrdItems);
}

// The first row whose cell in the sort column begins with the text; on SL, "=" asks for the
// item number itself.
int frmDataLookup::mfiMatch(const QString &text) const
{
    const bool sl = fgrdItems->TextMatrix(0, iSortCol) == QLatin1String("SL");
    const bool exact = sl && text.startsWith(QLatin1Char('='));
    const QString wanted = exact ? gfsItemID_normalise(text.mid(1).trimmed()).trimmed()
                           : sl  ? withoutPoint(text)
                                 : text.trimmed();
    if (wanted.isEmpty())
        return 0;
    for (int row = 1; row < fgrdItems->Rows(); ++row) {
        const QString cell = fgrdItems->TextMatrix(row, iSortCol).trimmed();
        if (exact ? cell == wanted
                  : (sl ? withoutPoint(cell) : cell).startsWith(wanted, Qt::CaseInsensitive))
            return row;
    }
    return 0;
}

void frmDataLookup::Text1_Change()
{
    if (const int row = mfiMatch(Text1->text())) {
        fgrdItems->setRow(row);
        gpGrid_ShowRow(*fgrdItems, fgrdItems->Cols() - 1);
    }
}

void frmDataLookup::mpSort_set(int col)
{
    if (col < 0 || col >= fgrdItems->Cols() || fgrdItems->Rows() < 2)
        return;
    iSortCol = col;
    gpGrid_SortColumn(*fgrdItems, col, kSortAscending);
    gpGrid_HeaderHighlight(*fgrdItems, col);
    fgrdItems->setRow(1);
    gpGrid_ShowRow(*fgrdItems, fgrdItems->Cols() - 1);
    Text1_Change();
}

void frmDataLookup::mpEntry_open(const QString &typed)
{
    const int row = fgrdItems->Row();
    if (!mfbEntryMode(iMode) || row < 1 || row >= fgrdItems->Rows())
        return;
    QTableView *view = fgrdItems->view();
    const QRect cell = view->visualRect(view->model()->index(row - 1, kQtyCol));
    txtText->setGeometry(QRect(view->viewport()->mapTo(fgrdItems, cell.topLeft()), cell.size()));
    txtText->setText(typed.isEmpty() ? fgrdItems->TextMatrix(row, kQtyCol) : typed);
    txtText->show();
    txtText->raise();
    txtText->setFocus();
}

bool frmDataLookup::mfbEntry_close(bool keep)
{
    if (keep) {
        QString qty = txtText->text().trimmed();
        bool number = true;
        const double value = qty.isEmpty() ? 0 : qty.toDouble(&number);
        if (!number || value < 0) {
            gfiMsgBox(QStringLiteral("Please insert a quantity number in this field or leave blank."));
            txtText->selectAll();
            return false;
        }
        fgrdItems->setTextMatrix(fgrdItems->Row(), kQtyCol, value == 0 ? QString() : qty);
    }
    txtText->hide();
    fgrdItems->view()->setFocus();
    return true;
}

void frmDataLookup::CmdAccept_Click()
{
    if (txtText->isVisible() && !mfbEntry_close(true))
        return;
    gaLookupEntries.clear();
    sLookupResult.clear();
    if (mfbEntryMode(iMode)) {
        for (int row = 1; row < fgrdItems->Rows(); ++row) {
            const QString qty = fgrdItems->TextMatrix(row, kQtyCol).trimmed();
            if (!qty.isEmpty())
                gaLookupEntries.append({gfsItemID_key(fgrdItems->TextMatrix(row, mfiSLCol(iMode))), qty});
        }
    } else if (fgrdItems->Row() >= 1 && fgrdItems->Row() < fgrdItems->Rows()) {
        sLookupResult = fgrdItems->TextMatrix(fgrdItems->Row(), 0).trimmed();
    }
    accept();
}

void frmDataLookup::reject()
{
    if (txtText->isVisible()) {
        mfbEntry_close(false);
        return;
    }
    gaLookupEntries.clear();
    sLookupResult.clear();
    QDialog::reject();
}

bool frmDataLookup::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    const bool enter = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    if (watched == txtText && enter) {
        mfbEntry_close(true);
        return true;
    }
    if (watched == Text1 && (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up)) {
        fgrdItems->view()->setFocus();
        return false;
    }
    if (watched == fgrdItems->view() && mfbEntryMode(iMode)) {
        if (enter) {
            mpEntry_open();
            return true;
        }
        const QString typed = key->text();
        if (typed.size() == 1 && typed[0].isDigit()) {
            mpEntry_open(typed);
            return true;
        }
    }
    if (watched == fgrdItems->view() && enter && !mfbEntryMode(iMode)) {
        CmdAccept_Click();
        return true;
    }
    if (watched == fgrdItems->view() && key->text().size() == 1 && key->text()[0].isPrint()) {
        Text1->setFocus();
        Text1->insert(key->text());
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace qln
