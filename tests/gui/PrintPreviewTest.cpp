// Printed lists and their preview, driven as a user drives them; PDFs are read back as text.
#include "output/PrintFlexGrid.h"
#include "output/frmSMPRNT_PREVIEW.h"
#include "output/frmSendMail.h"

#include "common/ProcessState.h"
#include "lookup/FlexGrid.h"
#include "output/PrintPageView.h"
#include "platform/Clock.h"
#include "platform/ModalRunner.h"
#include "support/ScriptedMessages.h"
#include "support/SmtpServer.h"
#include "support/TestDatabase.h"

#include <QBuffer>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <gtest/gtest.h>

using namespace qln;
using namespace qln::test;

namespace {

QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return QString::fromUtf8(process.readAllStandardOutput());
}
QString pdfText(const QString &file) { return run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")}); }
QString pdfInfo(const QString &file, const char *field)
{
    const QRegularExpression line(QString::fromLatin1(field) + QStringLiteral(":\\s*(.*)"));
    return line.match(run(QStringLiteral("pdfinfo"), {file})).captured(1).trimmed();
}
// The text of page n (1-based).
QString pdfPage(const QString &file, int n)
{
    return run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), QStringLiteral("-f"), QString::number(n),
                                             QStringLiteral("-l"), QString::number(n), file, QStringLiteral("-")});
}

template <typename T> T *child(QWidget &form, const QString &name)
{
    T *widget = form.findChild<T *>(name);
    EXPECT_NE(widget, nullptr) << name.toStdString();
    return widget;
}
QPushButton *cmd(QWidget &f, const char *name) { return child<QPushButton>(f, QString::fromLatin1(name)); }
QString pageOf(QWidget &f) { return child<QLabel>(f, QStringLiteral("lblPageOf"))->text(); }

// Saves the preview as PDF through its file dialog.
void saveAs(frmSMPRNT_PREVIEW &preview, const QString &file)
{
    ScopedModalScript script([&](QDialog &dialog) {
        if (auto *files = qobject_cast<QFileDialog *>(&dialog)) {
            files->selectFile(file);
            dialog.accept(); // the file dialog's own accept, through its base
        }
    });
    QTest::keyClick(&preview, Qt::Key_F7);
}

class PrintPreview : public ::testing::Test {
protected:
    void SetUp() override
    {
        gsDataPath = db.dataPath();
        Clock::setFixed(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        gpPrint_head_set({QStringLiteral("Promo Prices for Group 7"), QStringLiteral("Weekend specials"),
                          QStringLiteral("Corner Shop"), QStringLiteral("Store #4")});
    }
    void TearDown() override
    {
        Clock::setFixed(QDateTime());
        gsDataPath.clear();
    }

    // S/L, Description, a hidden key, Price; `rows` data rows.
    void fill(int rows)
    {
        grid.setCols(4);
        grid.setRows(rows + 1);
        const int widths[] = {1000, 3000, 0, 1200};
        const char *heads[] = {"S/L", "Description", "Key", "Price"};
        for (int c = 0; c < 4; ++c) {
            grid.setColWidth(c, widths[c]);
            grid.setTextMatrix(0, c, QString::fromLatin1(heads[c]));
        }
        grid.setColAlignment(3, 7);
        for (int r = 1; r <= rows; ++r) {
            grid.setTextMatrix(r, 0, QStringLiteral("%1").arg(1000000 + r));
            grid.setTextMatrix(r, 1, QStringLiteral("Row %1 item").arg(r));
            grid.setTextMatrix(r, 2, QStringLiteral("HIDDENKEY%1").arg(r));
            grid.setTextMatrix(r, 3, QStringLiteral("%1.25").arg(r));
        }
    }
    void render(frmSMPRNT_PREVIEW &preview, const QString &exportFile = QString())
    {
        gpPrint_FlexGrid(preview, grid, -1, 0, false, 1, false, exportFile);
        preview.show();
    }

    TestDatabase db;
    ScriptedMessages boxes;
    FlexGrid grid;
};

TEST_F(PrintPreview, APdfCarriesTitleHeaderPartsPagesAndNoHiddenColumn)
{
    fill(120);
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const QString file = db.file(QStringLiteral("list.pdf"));
    saveAs(preview, file);
    ASSERT_TRUE(QFile::exists(file));
    const int pages = preview.engine().pageCount();
    EXPECT_GT(pages, 2);
    EXPECT_EQ(pdfInfo(file, "Pages"), QString::number(pages));
    EXPECT_TRUE(pdfInfo(file, "Page size").startsWith(QStringLiteral("612 x 792"))) << "portrait letter";
    const QString first = pdfPage(file, 1);
    for (const char *text : {"Corner Shop", "Promo Prices for Group 7", "11/22/2026", "Weekend specials", "S/L",
                             "Description", "Price", "Store #4Page 1", "Row 1 item", "1.25"})
        EXPECT_TRUE(first.contains(QString::fromLatin1(text))) << text;
    EXPECT_FALSE(first.contains(QStringLiteral("HIDDENKEY")));
    EXPECT_FALSE(first.contains(QStringLiteral("Key")));
    // Later pages repeat the head lines and the header row and number themselves.
    const QString last = pdfPage(file, pages);
    for (const QString &text : {QStringLiteral("Weekend specials"), QStringLiteral("Description"),
                                QStringLiteral("Store #4Page %1").arg(pages), QStringLiteral("Row 120 item")})
        EXPECT_TRUE(last.contains(text)) << text.toStdString();
    EXPECT_EQ(pageOf(preview), QStringLiteral("Page 1 of %1").arg(pages));
}

TEST_F(PrintPreview, AWideGridTurnsTheSheetAndSplitsOnlyWhenAsked)
{
    grid.setCols(13);
    grid.setRows(3);
    grid.setFixedCols(1);
    for (int c = 0; c < 13; ++c) {
        grid.setColWidth(c, 1500);
        grid.setTextMatrix(0, c, c == 0 ? QStringLiteral("S/L") : QStringLiteral("Col%1").arg(c));
        for (int r = 1; r < 3; ++r)
            grid.setTextMatrix(r, c, QStringLiteral("r%1c%2").arg(r).arg(c));
    }
    frmSMPRNT_PREVIEW squeezed;
    render(squeezed);
    EXPECT_TRUE(squeezed.engine().landscape());
    EXPECT_EQ(squeezed.engine().pageCount(), 1);
    const QString file = db.file(QStringLiteral("wide.pdf"));
    saveAs(squeezed, file);
    EXPECT_TRUE(pdfInfo(file, "Page size").startsWith(QStringLiteral("792 x 612")));
    EXPECT_TRUE(pdfText(file).contains(QStringLiteral("Col12")));

    bPrintSplitColumns = true;
    frmSMPRNT_PREVIEW split;
    render(split);
    ASSERT_EQ(split.engine().pageCount(), 2);
    const QString splitFile = db.file(QStringLiteral("split.pdf"));
    saveAs(split, splitFile);
    const QString first = pdfPage(splitFile, 1), second = pdfPage(splitFile, 2);
    EXPECT_TRUE(first.contains(QStringLiteral("Col1 ")));
    EXPECT_FALSE(first.contains(QStringLiteral("Col12")));
    EXPECT_TRUE(second.contains(QStringLiteral("S/L"))) << "the fixed column repeats";
    EXPECT_TRUE(second.contains(QStringLiteral("r2c12")));
    EXPECT_TRUE(second.contains(QStringLiteral("r2c0")));
    bPrintSplitColumns = false;
}

TEST_F(PrintPreview, ExportHoldsTheVisibleCellsAndOddCellsPrint)
{
    fill(2);
    grid.setTextMatrix(1, 1, QStringLiteral("Crème \"Brûlée\", large"));
    grid.setTextMatrix(2, 1, QString(3000, QLatin1Char('W')));
    const QString csv = db.file(QStringLiteral("list.csv"));
    frmSMPRNT_PREVIEW preview;
    render(preview, csv);
    QFile in(csv);
    ASSERT_TRUE(in.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(in.readAll().mid(3));
    EXPECT_EQ(text.split(QStringLiteral("\r\n")).value(0), QStringLiteral("S/L,Description,Price"));
    EXPECT_EQ(text.split(QStringLiteral("\r\n")).value(1), QStringLiteral("1000001,\"Crème \"\"Brûlée\"\", large\",1.25"));
    EXPECT_FALSE(text.contains(QStringLiteral("HIDDENKEY")));

    // A bar and a line feed in cells, and a grid with no rows at all, print without a fault.
    grid.setTextMatrix(1, 1, QStringLiteral("a|b"));
    grid.setTextMatrix(2, 1, QStringLiteral("line\nbreak"));
    frmSMPRNT_PREVIEW odd;
    render(odd);
    EXPECT_EQ(odd.engine().tables().front().rowCount(), 3);
    const QString oddFile = db.file(QStringLiteral("odd.pdf"));
    saveAs(odd, oddFile);
    EXPECT_TRUE(pdfText(oddFile).contains(QStringLiteral("break")));
    fill(0);
    frmSMPRNT_PREVIEW empty;
    render(empty);
    EXPECT_EQ(empty.engine().pageCount(), 1);
    const QString emptyFile = db.file(QStringLiteral("empty.pdf"));
    saveAs(empty, emptyFile);
    EXPECT_TRUE(pdfText(emptyFile).contains(QStringLiteral("Description")));

    // A folder that isn't there: a box, and nothing written.
    const QString missing = db.file(QStringLiteral("missing/list.pdf"));
    saveAs(empty, missing);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_TRUE(boxes.texts().value(0).startsWith(QStringLiteral("Unable to save ") + missing));
    EXPECT_FALSE(QFile::exists(missing));
}

// The right edge of each word of page 1 that matches `pattern`, in points.
QList<double> rightEdges(const QString &file, const QString &pattern)
{
    const QRegularExpression word(QStringLiteral("xMax=\"([0-9.]+)\"[^>]*>(") + pattern + QStringLiteral(")</word>"));
    QList<double> edges;
    const QString boxes = run(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-l"), QStringLiteral("1"), file,
                                                            QStringLiteral("-")});
    for (auto it = word.globalMatch(boxes); it.hasNext();)
        edges << it.next().captured(1).toDouble();
    return edges;
}

TEST_F(PrintPreview, LatinListsUseTheStandardFacesAndOtherLettersEmbedAFont)
{
    fill(12);
    grid.setTextMatrix(1, 1, QStringLiteral("Sauce (hot) \\ 5€ Crème"));
    grid.setTextMatrix(2, 1, QStringLiteral("Tab\there"));
    frmSMPRNT_PREVIEW latin;
    render(latin);
    const QString file = db.file(QStringLiteral("latin.pdf"));
    saveAs(latin, file);
    const QString fonts = run(QStringLiteral("pdffonts"), {file});
    EXPECT_TRUE(fonts.contains(QStringLiteral("Helvetica"))) << fonts.toStdString();
    const QString text = pdfPage(file, 1);
    EXPECT_TRUE(text.contains(QStringLiteral("Sauce (hot) \\ 5€ Crème"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("Tab here")));
    // Prices are right-aligned: "1.25" and "12.25" end where their column ends.
    const QList<double> edges = rightEdges(file, QStringLiteral("[0-9]+\\.25"));
    ASSERT_EQ(edges.size(), 12);
    for (double edge : edges)
        EXPECT_NEAR(edge, edges.front(), 0.5);

    grid.setTextMatrix(3, 1, QStringLiteral("Łódź Pierogi"));
    frmSMPRNT_PREVIEW other;
    render(other);
    const QString otherFile = db.file(QStringLiteral("other.pdf"));
    saveAs(other, otherFile);
    EXPECT_FALSE(run(QStringLiteral("pdffonts"), {otherFile}).contains(QStringLiteral("Helvetica")));
    const QString otherText = pdfPage(otherFile, 1);
    EXPECT_TRUE(otherText.contains(QStringLiteral("Łódź Pierogi")));
    EXPECT_TRUE(otherText.contains(QStringLiteral("Sauce (hot) \\ 5€ Crème")));
    EXPECT_EQ(pdfInfo(otherFile, "Pages"), pdfInfo(file, "Pages"));
}

TEST_F(PrintPreview, ANarrowCaptionWrapsAndARefusedWriteIsAnError)
{
    fill(2);
    grid.setColWidth(1, 9000);
    grid.setColWidth(3, 700);
    grid.setTextMatrix(0, 3, QStringLiteral("Sale Off"));
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const QString file = db.file(QStringLiteral("wrapped.pdf"));
    saveAs(preview, file);
    const QStringList lines = pdfPage(file, 1).split(QLatin1Char('\n'));
    const auto line = [&](const QString &word) {
        return std::find_if(lines.begin(), lines.end(), [&](const QString &l) { return l.contains(word); }) - lines.begin();
    };
    EXPECT_GT(line(QStringLiteral("Off")), line(QStringLiteral("Sale"))) << lines.join(QLatin1Char('\n')).toStdString();

    QBuffer readOnly;
    ASSERT_TRUE(readOnly.open(QIODevice::ReadOnly));
    QString error;
    EXPECT_FALSE(preview.engine().writePdf(readOnly, error));
    EXPECT_FALSE(error.isEmpty());
}

TEST_F(PrintPreview, KeysMovePagesZoomFollowsTheBoxAndFindFramesHits)
{
    fill(200);
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const int pages = preview.engine().pageCount();
    ASSERT_GE(pages, 4);
    QTest::keyClick(&preview, Qt::Key_PageDown);
    EXPECT_EQ(pageOf(preview), QStringLiteral("Page 2 of %1").arg(pages));
    QTest::keyClick(&preview, Qt::Key_End);
    EXPECT_EQ(preview.currentPage(), pages);
    QTest::keyClick(&preview, Qt::Key_PageDown);
    EXPECT_EQ(preview.currentPage(), pages);
    QTest::keyClick(&preview, Qt::Key_PageUp);
    EXPECT_EQ(preview.currentPage(), pages - 1);
    QTest::keyClick(&preview, Qt::Key_Home);
    EXPECT_EQ(preview.currentPage(), 1);

    auto *zoom = child<QComboBox>(preview, QStringLiteral("cboZoom"));
    auto *view = child<PrintPageView>(preview, QStringLiteral("vsvPrinter"));
    const int width = view->width();
    zoom->lineEdit()->selectAll();
    QTest::keyClicks(zoom->lineEdit(), QStringLiteral("150"));
    QTest::keyClick(zoom->lineEdit(), Qt::Key_Return);
    EXPECT_EQ(zoom->currentText(), QStringLiteral("150%"));
    EXPECT_NEAR(view->width(), width * 1.5, 2);

    auto *text = child<QLineEdit>(preview, QStringLiteral("txtFind"));
    cmd(preview, "cmdFind(2)")->click();
    EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("Please enter value for which to search")});
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Search for ???"));
    QTest::keyClicks(text, QStringLiteral("row 15"));
    cmd(preview, "cmdFind(2)")->click();
    const int firstHit = preview.currentPage();
    EXPECT_EQ(firstHit, 1); // "Row 15 item"
    cmd(preview, "cmdFind(3)")->click(); // "Row 150 item", some pages on
    EXPECT_GT(preview.currentPage(), firstHit + 1);
    const int nextHit = preview.currentPage();
    cmd(preview, "cmdFind(3)")->click(); // "Row 151 item"
    EXPECT_GE(preview.currentPage(), nextHit);
    boxes.clear();
    text->setText(QStringLiteral("no such thing"));
    cmd(preview, "cmdFind(2)")->click();
    EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("Cannot find the string 'no such thing'\r\nThe document has been searched.")});
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Not Found"));

    if (QPrinterInfo::availablePrinters().isEmpty()) {
        boxes.clear();
        QTest::keyClick(&preview, Qt::Key_F9);
        EXPECT_EQ(boxes.texts(), QStringList{QStringLiteral("No Windows Printers setup you must setup a Printer to Print")});
    }
    QTest::keyClick(&preview, Qt::Key_Escape);
    EXPECT_FALSE(preview.isVisible());
}

TEST_F(PrintPreview, ADelimitedReportSavesAsCsvAndAnExistingNameIsAskedAgain)
{
    fill(3);
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const QString tmp = db.file(QStringLiteral("priceLevel.tmp"));
    const QString taken = db.file(QStringLiteral("taken.csv"));
    const QString chosen = db.file(QStringLiteral("chosen.csv"));
    for (const auto &[file, bytes] : {std::pair{tmp, QByteArray("a,b\r\n")}, std::pair{taken, QByteArray("old")}}) {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    QStringList defaults;
    QStringList names{taken, chosen};
    ScopedModalScript script([&](QDialog &dialog) {
        if (auto *ask = qobject_cast<QInputDialog *>(&dialog)) {
            defaults << ask->textValue();
            ask->setTextValue(names.takeFirst());
            ask->accept();
        }
    });
    boxes.answer(MsgAnswer::Yes); // csv for Excel
    boxes.answer(MsgAnswer::No);  // don't overwrite
    QTest::keyClick(&preview, Qt::Key_F7);
    EXPECT_EQ(boxes.texts(), (QStringList{QStringLiteral("Save as csv file for import into Excel"),
                                          taken + QStringLiteral(" already exists. Overwrite?")}));
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Save Option"));
    EXPECT_EQ(defaults.value(0), db.file(QStringLiteral("priceLevel.csv")));
    EXPECT_EQ(defaults.size(), 2);
    EXPECT_FALSE(QFile::exists(tmp));
    QFile moved(chosen), kept(taken);
    ASSERT_TRUE(moved.open(QIODevice::ReadOnly) && kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(moved.readAll(), QByteArray("a,b\r\n"));
    EXPECT_EQ(kept.readAll(), QByteArray("old"));
    EXPECT_TRUE(preview.isVisible());
}

class PreviewMail : public PrintPreview {
protected:
    void SetUp() override
    {
        PrintPreview::SetUp();
        ASSERT_TRUE(server.started());
        server.configure();
    }
    // F8 in the preview, with the mail window played by `play`; true when it closed.
    bool mail(frmSMPRNT_PREVIEW &preview, const std::function<void(frmSendMail &)> &play)
    {
        bool closed = false;
        ScopedModalScript script([&](QDialog &dialog) {
            if (auto *window = qobject_cast<frmSendMail *>(&dialog)) {
                play(*window);
                closed = !window->isVisible();
            }
        });
        QTest::keyClick(&preview, Qt::Key_F8);
        return closed;
    }
    QStringList log() const { return db.readFile(QStringLiteral("Email.log")).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts); }

    SmtpServer server;
};

TEST_F(PreviewMail, TheListGoesOutAsAPdfAndTheSendIsLogged)
{
    fill(5);
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const bool closed = mail(preview, [](frmSendMail &window) {
        EXPECT_EQ(child<QLineEdit>(window, QStringLiteral("TxtSubject"))->text(), QStringLiteral("Promo Prices for Group 7"));
        EXPECT_TRUE(child<QLineEdit>(window, QStringLiteral("txtAttach"))->text().endsWith(QStringLiteral(".pdf")));
        QTest::keyClicks(child<QLineEdit>(window, QStringLiteral("txtTo")), QStringLiteral("buyer@shop.test;owner@shop.test"));
        QTest::keyClicks(child<QLineEdit>(window, QStringLiteral("txtFrom")), QStringLiteral("clerk@shop.test"));
        // The screen keyboard writes into the box clicked last.
        auto *cc = child<QLineEdit>(window, QStringLiteral("TxtCC"));
        cmd(window, "CmdShowKB")->click();
        EXPECT_EQ(cmd(window, "CmdShowKB")->text(), QStringLiteral("Hide Keyboard"));
        QTest::mouseClick(cc, Qt::LeftButton);
        child<QWidget>(window, QStringLiteral("optLower"))->setProperty("checked", true);
        for (const char *key : {"a", "@", "b", "."})
            for (QPushButton *button : window.findChildren<QPushButton *>())
                if (button->objectName().startsWith(QStringLiteral("cmdKeyPad")) && button->text() == QString::fromLatin1(key))
                    button->click();
        EXPECT_EQ(cc->text(), QStringLiteral("a@b."));
        cc->setText(QStringLiteral("audit@shop.test"));
        cmd(window, "cmdSend")->click();
    });
    EXPECT_TRUE(closed);
    ASSERT_EQ(server.received(), 1);
    EXPECT_EQ(server.recipients(1), strings({"buyer@shop.test", "owner@shop.test", "audit@shop.test"}));
    EXPECT_TRUE(server.message(1).contains("filename=\"List.pdf\""));
    EXPECT_EQ(log(), QStringList{QStringLiteral("2026/11/22 09:00\tbuyer@shop.test;owner@shop.test\tPromo Prices for Group 7")});
}

TEST_F(PreviewMail, ARefusedLoginKeepsTheWindowOpenAndLogsTheFailure)
{
    server.configure(QStringLiteral("clerk"), QStringLiteral("wrong"));
    fill(1);
    frmSMPRNT_PREVIEW preview;
    render(preview);
    const bool closed = mail(preview, [](frmSendMail &window) {
        QTest::keyClicks(child<QLineEdit>(window, QStringLiteral("txtTo")), QStringLiteral("buyer@shop.test"));
        QTest::keyClicks(child<QLineEdit>(window, QStringLiteral("txtFrom")), QStringLiteral("clerk@shop.test"));
        cmd(window, "cmdSend")->click();
        EXPECT_EQ(child<QLineEdit>(window, QStringLiteral("txtTo"))->text(), QStringLiteral("buyer@shop.test"));
    });
    EXPECT_FALSE(closed);
    EXPECT_EQ(server.received(), 0);
    ASSERT_EQ(boxes.shown().size(), 1);
    EXPECT_EQ(boxes.shown().value(0).title, QStringLiteral("Error sending Email"));
    EXPECT_EQ(log(), (QStringList{QStringLiteral("Send Failed:  2026/11/22 09:00\tbuyer@shop.test\tPromo Prices for Group 7"),
                                  QStringLiteral("Server: ") + server.address() + QStringLiteral("\tPort:\tUser:clerk")}));
}

} // namespace
