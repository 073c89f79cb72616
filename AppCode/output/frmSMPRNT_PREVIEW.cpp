#include "output/frmSMPRNT_PREVIEW.h"

#include "common/Files.h"
#include "common/FormControls.h"
#include "common/FormKeys.h"
#include "common/FormLook.h"
#include "common/ProcessState.h"
#include "output/PrintPageView.h"
#include "output/PrintState.h"
#include "output/frmSendMail.h"
#include "platform/Help.h"
#include "platform/Messages.h"
#include "platform/ModalRunner.h"
#include "store/StatementLog.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPageSetupDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>

namespace qln {

namespace {
constexpr int kMinZoom = 10;
constexpr int kMaxZoom = 500;

QAction *menuItem(QMenu *menu, const QString &name, const QString &caption)
{
    QAction *action = menu->addAction(caption);
    action->setObjectName(name);
    return action;
}
} // namespace

frmSMPRNT_PREVIEW::frmSMPRNT_PREVIEW(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmSMPRNT_PREVIEW"));
    setWindowTitle(QStringLiteral("Print Preview"));
    mpControls_create();
    gpFormKeys_install(this, cmdClose);
    gpFont_normalise(this);
    resize(960, 760);
}

frmSMPRNT_PREVIEW::~frmSMPRNT_PREVIEW() = default;

void frmSMPRNT_PREVIEW::mpControls_create()
{
    static const char *const moves[4] = {"&First", "Pre&vious", "&Next", "&Last"};
    auto *top = new QHBoxLayout;
    for (int i = 0; i < 4; ++i) {
        cmdMove[i] = gfCommand_button(this, QStringLiteral("cmdMove(%1)").arg(i), QString::fromLatin1(moves[i]));
        top->addWidget(cmdMove[i]);
    }
    connect(cmdMove[0], &QPushButton::clicked, this, [this] { mpPage_move(1); });
    connect(cmdMove[1], &QPushButton::clicked, this, [this] { mpPage_move(currentPage() - 1); });
    connect(cmdMove[2], &QPushButton::clicked, this, [this] { mpPage_move(currentPage() + 1); });
    connect(cmdMove[3], &QPushButton::clicked, this, [this] { mpPage_move(m_engine.pageCount()); });

    cboZoom = new QComboBox(this);
    cboZoom->setObjectName(QStringLiteral("cboZoom"));
    cboZoom->setEditable(true);
    cboZoom->setInsertPolicy(QComboBox::NoInsert);
    cboZoom->addItems({QStringLiteral("100%"), QStringLiteral("125%"), QStringLiteral("150%"), QStringLiteral("175%"),
                       QStringLiteral("200%")});
    connect(cboZoom, &QComboBox::activated, this, [this] { cboZoom_apply(); });
    connect(cboZoom->lineEdit(), &QLineEdit::returnPressed, this, [this] { cboZoom_apply(); });
    top->addWidget(cboZoom);
    lblPageOf = gfForm_label(this, QStringLiteral("lblPageOf"));
    top->addWidget(lblPageOf, 1);

    static const char *const finds[4] = {"F6 Show PO", "Show Invoice", "&Find", "Find Next"};
    for (int i = 0; i < 4; ++i)
        cmdFind[i] = gfCommand_button(this, QStringLiteral("cmdFind(%1)").arg(i), QString::fromLatin1(finds[i]));
    // Purchase orders and invoices are other programs' reports.
    cmdFind[0]->hide();
    cmdFind[1]->hide();
    txtFind = new QLineEdit(this);
    txtFind->setObjectName(QStringLiteral("txtFind"));
    connect(cmdFind[2], &QPushButton::clicked, this, [this] { cmdFind_Click(false); });
    connect(cmdFind[3], &QPushButton::clicked, this, [this] { cmdFind_Click(true); });
    top->addWidget(txtFind);
    top->addWidget(cmdFind[2]);
    top->addWidget(cmdFind[3]);

    vsvPrinter = new PrintPageView(m_engine);
    m_scroll = new QScrollArea(this);
    m_scroll->setWidget(vsvPrinter);
    m_scroll->setAlignment(Qt::AlignHCenter);
    m_scroll->setBackgroundRole(QPalette::Dark);

    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("prgPages"));
    m_progress->hide();

    cmdPrint = gfCommand_button(this, QStringLiteral("cmdPrint"), QStringLiteral("F9 &Print"));
    cmdSave = gfCommand_button(this, QStringLiteral("cmdSave"), QStringLiteral("F7 &Save"));
    cmdSendMail = gfCommand_button(this, QStringLiteral("cmdSendMail"), QStringLiteral("F8 Email"));
    cmdClose = gfCommand_button(this, QStringLiteral("cmdClose"), QStringLiteral("Esc Cancel"));
    connect(cmdPrint, &QPushButton::clicked, this, [this] { mpPrint(false); });
    connect(cmdSave, &QPushButton::clicked, this, [this] { mnuPrint_Save_Click(); });
    connect(cmdSendMail, &QPushButton::clicked, this, [this] { cmdSendMail_Click(); });
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    auto *bottom = new QHBoxLayout;
    bottom->addWidget(m_progress, 1);
    for (QPushButton *button : {cmdPrint, cmdSave, cmdSendMail, cmdClose})
        bottom->addWidget(button);

    auto *form = new QVBoxLayout(this);
    auto *bar = new QMenuBar(this);
    mpMenus_create(bar);
    form->setMenuBar(bar);
    form->addLayout(top);
    form->addWidget(m_scroll, 1);
    form->addLayout(bottom);
}

void frmSMPRNT_PREVIEW::mpMenus_create(QWidget *barWidget)
{
    auto *bar = static_cast<QMenuBar *>(barWidget);
    QMenu *mnuPrint = bar->addMenu(QStringLiteral("&Print"));
    mnuPrint->setObjectName(QStringLiteral("mnuPrint"));
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrinterSetup"), QStringLiteral("Printer &Setup")), &QAction::triggered,
            this, [this] { mnuPrinterSetup_Click(); });
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrint_item(0)"), QStringLiteral("&All Pages")), &QAction::triggered,
            this, [this] { mpPrint(false); });
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrint_item(1)"), QStringLiteral("&Current Page")), &QAction::triggered,
            this, [this] { mpPrint(true); });
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrint_Save"), QStringLiteral("&Save As")), &QAction::triggered, this,
            [this] { mnuPrint_Save_Click(); });
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrint_Mail"), QStringLiteral("Send &E-Mail")), &QAction::triggered,
            this, [this] { cmdSendMail_Click(); });
    connect(menuItem(mnuPrint, QStringLiteral("mnuPrint_exit"), QStringLiteral("E&xit")), &QAction::triggered, this,
            &QDialog::reject);
    QMenu *mnuHelp = bar->addMenu(QStringLiteral("&Help"));
    mnuHelp->setObjectName(QStringLiteral("mnuHelp"));
    for (const char *caption : {"&Contents...", "&Index..."})
        connect(mnuHelp->addAction(QString::fromLatin1(caption)), &QAction::triggered, this,
                [this] { gpHelp_guides_open(objectName()); });
}

void frmSMPRNT_PREVIEW::mpDocument_clear()
{
    m_engine.clear();
    m_lastHit.reset();
    vsvPrinter->setHit(std::nullopt);
}

void frmSMPRNT_PREVIEW::mpDocument_ended()
{
    vsvPrinter->refit();
    mpPage_move(1);
}

int frmSMPRNT_PREVIEW::currentPage() const { return vsvPrinter->page() + 1; }

void frmSMPRNT_PREVIEW::mpPage_move(int page)
{
    const int count = m_engine.pageCount();
    if (count == 0)
        return;
    vsvPrinter->setPage(std::clamp(page, 1, count) - 1);
    mpPage_show();
}

void frmSMPRNT_PREVIEW::mpPage_show()
{
    lblPageOf->setText(QStringLiteral("Page ") + QString::number(currentPage()) + QStringLiteral(" of ") +
                       QString::number(m_engine.pageCount()));
}

void frmSMPRNT_PREVIEW::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Home: mpPage_move(1); return;
    case Qt::Key_PageUp: mpPage_move(currentPage() - 1); return;
    case Qt::Key_PageDown: mpPage_move(currentPage() + 1); return;
    case Qt::Key_End: mpPage_move(m_engine.pageCount()); return;
    default: QDialog::keyPressEvent(event);
    }
}

void frmSMPRNT_PREVIEW::cboZoom_apply()
{
    QString text = cboZoom->currentText().trimmed();
    bool number = false;
    text.toInt(&number);
    if (!text.endsWith(QLatin1Char('%')) && number)
        text += QLatin1Char('%');
    const int zoom = text.chopped(text.endsWith(QLatin1Char('%')) ? 1 : 0).toInt(&number);
    if (number)
        vsvPrinter->setZoom(std::clamp(zoom, kMinZoom, kMaxZoom));
    cboZoom->setEditText(QString::number(vsvPrinter->zoom()) + QLatin1Char('%'));
}

PrintEngine::PageTick frmSMPRNT_PREVIEW::mfProgress()
{
    return [this](int page, int count) {
        m_progress->setVisible(page < count);
        m_progress->setRange(0, count);
        m_progress->setValue(page);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
}

bool frmSMPRNT_PREVIEW::mfbPrinter_ready()
{
    if (!QPrinterInfo::availablePrinters().isEmpty())
        return true;
    gfiMsgBox(QStringLiteral("No Windows Printers setup you must setup a Printer to Print"));
    return false;
}

QPrinter &frmSMPRNT_PREVIEW::mfPrinter()
{
    if (!m_printer)
        m_printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    return *m_printer;
}

void frmSMPRNT_PREVIEW::mnuPrinterSetup_Click()
{
    if (!mfbPrinter_ready())
        return;
    QPageSetupDialog dialog(&mfPrinter(), this);
    gfiForm_show_modal(dialog);
}

void frmSMPRNT_PREVIEW::mpPrint(bool bCurrentOnly)
{
    if (!mfbPrinter_ready())
        return;
    QPrinter &printer = mfPrinter();
    printer.setFromTo(1, m_engine.pageCount());
    QPrintDialog dialog(&printer, this);
    dialog.setMinMax(1, m_engine.pageCount());
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    if (bCurrentOnly)
        printer.setPrintRange(QPrinter::CurrentPage);
    if (gfiForm_show_modal(dialog) != QDialog::Accepted)
        return;
    int first = 0, last = m_engine.pageCount() - 1;
    if (printer.printRange() == QPrinter::CurrentPage)
        first = last = currentPage() - 1;
    else if (printer.printRange() == QPrinter::PageRange)
        first = printer.fromPage() - 1, last = printer.toPage() - 1;
    m_engine.print(printer, first, last, mfProgress());
}

void frmSMPRNT_PREVIEW::mpPrint_direct()
{
    if (!mfbPrinter_ready())
        return;
    m_engine.print(mfPrinter(), 0, m_engine.pageCount() - 1, mfProgress());
}

void frmSMPRNT_PREVIEW::mnuPrint_Save_Click()
{
    const QString delimited = gfsDataPath_file(QStringLiteral("priceLevel.tmp"));
    if (gfb_FileExists(delimited)) {
        if (gfiMsgBox(QStringLiteral("Save as csv file for import into Excel"), MsgButtons::YesNo, MsgIcon::Question,
                      QStringLiteral("Save Option")) == MsgAnswer::Yes) {
            mfbCsv_save();
            return;
        }
        gfbFile_delete(delimited);
    }
    mpPdf_save();
}

// The report's delimited form moves to a name the user gives; the window stays.
bool frmSMPRNT_PREVIEW::mfbCsv_save()
{
    for (;;) {
        QInputDialog ask(this);
        ask.setWindowTitle(QStringLiteral("Save as"));
        ask.setLabelText(QStringLiteral("Save file as:"));
        ask.setTextValue(gfsDataPath_file(QStringLiteral("priceLevel.csv")));
        if (gfiForm_show_modal(ask) != QDialog::Accepted || ask.textValue().trimmed().isEmpty())
            return false;
        const QString name = ask.textValue().trimmed();
        if (gfb_FileExists(name)) {
            if (gfiMsgBox(name + QStringLiteral(" already exists. Overwrite?"), MsgButtons::YesNo, MsgIcon::None,
                          QStringLiteral("File save error")) == MsgAnswer::No)
                continue;
            gfbFile_delete(name);
        }
        if (QFile::rename(gfsDataPath_file(QStringLiteral("priceLevel.tmp")), name))
            return true;
        gfiMsgBox(QStringLiteral("Unable to save ") + name, MsgButtons::OK, MsgIcon::Exclamation,
                  QStringLiteral("File save error"));
        return false;
    }
}

void frmSMPRNT_PREVIEW::mpPdf_save()
{
    QFileDialog dialog(this, QStringLiteral("Save As"), QDir(gsDataPath).absolutePath(), QStringLiteral("(*.pdf)"));
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    if (gfiForm_show_modal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    const QString file = dialog.selectedFiles().constFirst();
    QString error;
    if (!m_engine.writePdf(file, error, mfProgress()))
        gfiMsgBox(QStringLiteral("Unable to save ") + file + QStringLiteral(": ") + error, MsgButtons::OK,
                  MsgIcon::Exclamation, QStringLiteral("Save As"));
}

void frmSMPRNT_PREVIEW::cmdSendMail_Click()
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("List.pdf"));
    QString error;
    if (!folder.isValid() || !m_engine.writePdf(file, error, mfProgress())) {
        gfiMsgBox(QStringLiteral("Sending Mail failed due to ") + (folder.isValid() ? error : folder.errorString()));
        return;
    }
    frmSendMail mail(this);
    mail.mpSubject_set(sPrintTitle);
    mail.mpAttachment_set(file);
    gfiForm_show_modal(mail);
}

void frmSMPRNT_PREVIEW::cmdFind_Click(bool bNext)
{
    const QString text = txtFind->text();
    if (text.isEmpty()) {
        gfiMsgBox(QStringLiteral("Please enter value for which to search"), MsgButtons::OK, MsgIcon::None,
                  QStringLiteral("Search for ???"));
        return;
    }
    const std::optional<PrintHit> after = bNext ? m_lastHit : std::nullopt;
    const std::optional<PrintHit> hit = m_engine.find(text, currentPage() - 1, after);
    if (!hit) {
        gfiMsgBox(QStringLiteral("Cannot find the string '") + text + QStringLiteral("'\r\nThe document has been searched."),
                  MsgButtons::OK, MsgIcon::None, QStringLiteral("Not Found"));
        return;
    }
    m_lastHit = hit;
    vsvPrinter->setHit(hit);
    mpPage_move(hit->page + 1);
}

} // namespace qln
