// Every text of every list window reads whole at the window's default size on the demo set,
// and the keys of the platform the suite comes from work on command buttons.
#include "DemoData.h"
#include "common/FormControls.h"
#include "common/ProcessState.h"
#include "config/TermDefinitions.h"
#include "lookup/DataGrid.h"
#include "lookup/FlexGrid.h"
#include "lookup/frm_Lookup.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "platform/Recordset.h"
#include "platform/Connection.h"
#include "promo/frmMain.h"
#include "promo/frmTags_Print.h"
#include "shell/ProcessReset.h"
#include "shell/Startup.h"
#include "store/Database.h"
#include "store/Names.h"
#include "store/RecordOps.h"
#include "support/ScriptedMessages.h"
#include "support/TestDatabase.h"

#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

const QDate kToday(2026, 11, 22);

// "row,col: text" for each cell whose text is wider (or, wrapped, taller) than its cell; with
// `headers`, only in the columns so captioned.
QStringList cutCells(FlexGrid &grid, const QStringList &headers = {})
{
    QTableView *view = grid.view();
    QHeaderView *header = view->horizontalHeader();
    QAbstractItemModel *model = view->model();
    QStringList cut;
    for (int col = 0; col < model->columnCount(); ++col) {
        if (view->isColumnHidden(col) || (!headers.isEmpty() && !headers.contains(grid.TextMatrix(0, col).trimmed())))
            continue;
        const int width = view->columnWidth(col);
        if (header->isVisible()) {
            const QString text = model->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
            const QVariant font = model->headerData(col, Qt::Horizontal, Qt::FontRole);
            const QFontMetrics metrics(font.isValid() ? font.value<QFont>() : header->font());
            const int room = width - 2 * header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
            const QRect needed = metrics.boundingRect(QRect(0, 0, room, 10000), grid.WordWrap() ? Qt::TextWordWrap : 0, text);
            if (needed.width() > room || needed.height() > header->height())
                cut << QStringLiteral("header,%1: %2").arg(col).arg(text);
        }
        for (int row = 0; row < model->rowCount(); ++row) {
            const QModelIndex index = model->index(row, col);
            QStyleOptionViewItem option;
            option.initFrom(view);
            option.font = view->font();
            option.widget = view;
            if (view->itemDelegateForIndex(index)->sizeHint(option, index).width() > width)
                cut << QStringLiteral("%1,%2: %3").arg(row + 1).arg(col).arg(index.data().toString());
        }
    }
    return cut;
}

class ReadableWindows : public ::testing::Test {
protected:
    void SetUp() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime(kToday, QTime(10, 30)));
        gsAppPath = program.path();
        demo::DemoOptions o = demo::gfDemo_options(db.info(), db.dataPath(), 300);
        demo::DemoReport report;
        QString error;
        ASSERT_TRUE(demo::gfbDemo_build(o, report, error)) << error.toStdString();
        ASSERT_GT(report.promos, 0);
        gpProcess_reset();
        ASSERT_TRUE(gfbStartup_prepare(QStringLiteral("/DATAPATH=") + db.dataPath()));
        boxes.clear();
    }
    void TearDown() override
    {
        gpProcess_reset();
        Clock::setFixed(QDateTime());
    }
    static FlexGrid &grid(QWidget &form) { return *form.findChild<FlexGrid *>(QStringLiteral("fgrdItems")); }
    // The item with the most promos, so that its face shows several rows.
    static QString busiestItem()
    {
        Recordset rs;
        EXPECT_TRUE(rs.open(dbConnection(), QStringLiteral("SELECT SL, COUNT(*) FROM PromoPrices WHERE Invuid > 0 GROUP BY SL ORDER BY 2 DESC, 1")));
        return rs.value(0).toString();
    }

    TestDatabase db;
    QTemporaryDir program;
    ScriptedMessages boxes;
};

} // namespace

TEST_F(ReadableWindows, ItemPromosShowEveryCellWholeInBothFacesAndTheColumnsFillTheGrid)
{
    gbItemMode = true;
    gsSL = busiestItem();
    frmMain form;
    form.show();
    FlexGrid &list = grid(form);
    ASSERT_GT(list.Rows(), 2) << gsSL.toStdString();
    EXPECT_EQ(cutCells(list), QStringList()) << "item face";
    const auto filled = [&] {
        const int used = list.view()->horizontalHeader()->length();
        return used <= list.view()->viewport()->width() && used * 100 >= list.view()->viewport()->width() * 95;
    };
    EXPECT_TRUE(filled()) << list.view()->horizontalHeader()->length() << " of " << list.view()->viewport()->width();
    for (int i = 0; i < 3; ++i) {
        const auto *box = form.findChild<QWidget *>(QStringLiteral("lblEditData(%1)").arg(i));
        EXPECT_GE(box->width(), box->sizeHint().width()) << "top bar box " << i;
    }

    form.findChild<QPushButton *>(QStringLiteral("CmdViewAll"))->click();
    ASSERT_GT(list.Rows(), 20);
    EXPECT_EQ(cutCells(list), QStringList()) << "All Items face";
    EXPECT_TRUE(filled());

    form.resize(form.width() * 3 / 2, form.height());
    EXPECT_TRUE(QTest::qWaitFor(filled, 2000)) << "after a resize";
}

// Every column, with the widest vendors of the demo set and prices up to a million.
TEST_F(ReadableWindows, LookupShowsEveryCellWhole)
{
    ASSERT_GT(gfiDB_Execute(QStringLiteral("UPDATE invt1 SET Price=999999.99, PriceIncTax=999999.99, Cost=999999.99, QtyOnHand=-4999")), 0);
    gfiDB_Execute(QStringLiteral("UPDATE invt1 SET VendorCode='O''NEILL&SONS' WHERE RecordNum % 2 = 0"));
    gfiDB_Execute(QStringLiteral("UPDATE invt1 SET VendorCode='PRAIRIEFOODS' WHERE RecordNum % 2 = 1"));
    frm_Lookup form;
    form.show();
    ASSERT_FALSE(grid(form).TextMatrix(1, 0).trimmed().isEmpty());
    EXPECT_EQ(cutCells(grid(form)), QStringList());
    const QTableView *view = grid(form).view();
    EXPECT_LE(view->horizontalHeader()->length(), view->viewport()->width()) << "the window opens on every column";
}

// Full fields of the names list read whole in the columns their headers give.
TEST_F(ReadableWindows, NamesLookupShowsEveryCellWhole)
{
    gpNames_Open(kNamesTable, gsDataPath);
    ASSERT_TRUE(gfbDB_TableOpen(kNamesTable));
    const char *rows[][10] = {
        {"WESTFIELD00042", "O'Neill Hardware & Garden Supply", "Vanderberg-Whitfield", "Maximilian", "12345 North Riverside Boulevard",
         "San Bernardino", "CA", "92401-1234", "WXYZ", "555-123-4567"},
        {"A1", "Corner Shop", "Li", "Al", "1 Main St", "Troy", "NY", "12180", "M", "555-0000"},
    };
    for (const auto &r : rows) {
        gName = NameRecord();
        QString NameRecord::*fields[] = {&NameRecord::ARCode, &NameRecord::Business, &NameRecord::LastName,
                                         &NameRecord::FirstName, &NameRecord::Address, &NameRecord::City,
                                         &NameRecord::STATE, &NameRecord::Zip, &NameRecord::Mail, &NameRecord::PhoneIndex};
        for (int i = 0; i < 10; ++i)
            gName.*fields[i] = gfsNames_fitted(fields[i], QString::fromUtf8(r[i]));
        ASSERT_TRUE(gfbDB_RecordOp(kNamesTable, kOpInsert));
    }
    QTemporaryDir termsDir;
    QFile terms(termsDir.filePath(QStringLiteral("SYSTERMS.MSG")));
    ASSERT_TRUE(terms.open(QIODevice::WriteOnly));
    terms.write("[INDEX]\r\n050=Business\r\n093=First Name\r\n094=Last Name\r\n"
                "[DEFAULT]\r\n050=Business Name\r\n093=First Name\r\n094=Last Name\r\n");
    terms.close();
    ASSERT_TRUE(gfbTerms_load(termsDir.path()));
    iLookupFile = kNamesTable;
    bFindMode = true;
    const auto itemsAgain = qScopeGuard([] { iLookupFile = 1, bFindMode = false, gaTerms.clear(); });
    frm_Lookup form;
    form.show();
    ASSERT_EQ(grid(form).TextMatrix(1, 1).trimmed(), QStringLiteral("A1"));
    EXPECT_EQ(cutCells(grid(form)), QStringList());
    const QTableView *view = grid(form).view();
    EXPECT_LE(view->horizontalHeader()->length(), view->viewport()->width()) << "the window opens on every column";
}

TEST_F(ReadableWindows, TagListShowsEveryLineWhole)
{
    frmTags_Print form;
    form.show();
    auto *date = form.findChild<QLineEdit *>(QStringLiteral("txtEdit(1)"));
    QTest::keyClick(date, Qt::Key_Return);
    auto *list = form.findChild<QListWidget *>(QStringLiteral("lstPromos"));
    ASSERT_GT(list->count(), 0);
    EXPECT_LE(list->sizeHintForColumn(0), list->viewport()->width());
}

TEST_F(ReadableWindows, EnterOnAFocusedCommandButtonPressesIt)
{
    QDialog form;
    int presses = 0;
    QPushButton *button = gfCommand_button(&form, QStringLiteral("cmdGo"), QStringLiteral("F2 Go"));
    auto *box = new QLineEdit(&form);
    QObject::connect(button, &QPushButton::clicked, [&] { ++presses; });
    form.show();
    button->setFocus();
    QTest::keyClick(button, Qt::Key_Return);
    QTest::keyClick(button, Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(presses, 2);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(presses, 2) << "Enter in a box is not a press of a button";
    EXPECT_TRUE(form.isVisible());
}

namespace {

// The name of the control that has the focus (a grid's cells count as the grid).
QString focusName(QWidget &form)
{
    for (QWidget *w = form.focusWidget(); w; w = w->parentWidget())
        if (!w->objectName().isEmpty())
            return w->objectName();
    return QString();
}

// The controls Tab visits from the one that has the focus, until it comes round again.
QStringList tabWalk(QWidget &form)
{
    QStringList seen{focusName(form)};
    for (int i = 0; i < 40; ++i) {
        QTest::keyClick(form.focusWidget(), Qt::Key_Tab);
        const QString name = focusName(form);
        if (name == seen.first())
            break;
        seen << name;
    }
    return seen;
}

} // namespace

TEST_F(ReadableWindows, TabWalksEachWindowInTheOrderOfItsLayout)
{
    gbItemMode = true;
    gsSL = busiestItem();
    frmMain form;
    form.show();
    form.activateWindow();
    grid(form).setFocus();
    EXPECT_EQ(tabWalk(form), strings({"fgrdItems", "chkExpired", "cmdItem", "CmdViewAll", "cmdEdit(0)", "cmdEdit(1)", "cmdEdit(2)",
                                      "cmdPurge(0)", "cmdPurge(1)", "cmdPrint", "txtSearch", "cmdQuit"}))
        << "the grid and its box, then the commands down the side";

    QStringList editor;
    {
        ScopedModalScript script([&](QDialog &dialog) {
            dialog.findChild<QWidget *>(QStringLiteral("Option1(0)"))->setFocus();
            editor = tabWalk(dialog);
        });
        QTest::keyClick(&form, Qt::Key_F2);
    }
    EXPECT_EQ(editor, strings({"Option1(0)", "Option1(1)", "Option1(2)", "txtEdit(3)", "txtEdit(1)", "txtEdit(2)", "cmdHelp",
                               "cmdCalendar", "cmdAcceptCancel(0)", "cmdAcceptCancel(1)"}))
        << "the kind of change and its amount, then the dates, then the commands left to right";

    frm_Lookup lookup;
    lookup.show();
    lookup.activateWindow();
    lookup.findChild<QWidget *>(QStringLiteral("txtEditValue"))->setFocus();
    const QStringList walk = tabWalk(lookup);
    ASSERT_GE(walk.size(), 4);
    EXPECT_EQ(walk.mid(0, 4), strings({"txtEditValue", "ckWildcard", "cmdEdit", "fgrdItems"})) << walk.join(QLatin1Char(' ')).toStdString();
    EXPECT_EQ(walk.last(), QStringLiteral("cmdExit"));
}
