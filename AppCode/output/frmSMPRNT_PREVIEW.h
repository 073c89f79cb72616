#pragma once
#include "output/PrintEngine.h"

#include <QDialog>

#include <memory>
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPrinter;
class QProgressBar;
class QPushButton;
class QScrollArea;

namespace qln {

class PrintPageView;

// The preview of a printed list: page moves, zoom, find, print, save as PDF or CSV, mail.
class frmSMPRNT_PREVIEW final : public QDialog {
    Q_OBJECT
public:
    explicit frmSMPRNT_PREVIEW(QWidget *parent = nullptr);
    ~frmSMPRNT_PREVIEW() override;

    PrintEngine &engine() { return m_engine; }
    const PrintEngine &engine() const { return m_engine; }
    void mpDocument_clear();
    // The document is complete: the view goes to its first page.
    void mpDocument_ended();
    int currentPage() const; // 1-based
    void mpPage_move(int page);
    // Prints every page on the platform's default printer, or says there is none.
    void mpPrint_direct();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void mpControls_create();
    void mpMenus_create(QWidget *bar);
    void mpPage_show();
    void cboZoom_apply();
    bool mfbPrinter_ready();
    void mnuPrinterSetup_Click();
    QPrinter &mfPrinter();
    void mpPrint(bool bCurrentOnly);
    void mnuPrint_Save_Click();
    bool mfbCsv_save();
    void mpPdf_save();
    void cmdSendMail_Click();
    void cmdFind_Click(bool bNext);
    PrintEngine::PageTick mfProgress();

    PrintEngine m_engine;
    PrintPageView *vsvPrinter = nullptr;
    QScrollArea *m_scroll = nullptr;
    QPushButton *cmdMove[4] = {};
    QComboBox *cboZoom = nullptr;
    QLabel *lblPageOf = nullptr;
    QPushButton *cmdPrint = nullptr;
    QPushButton *cmdSave = nullptr;
    QPushButton *cmdSendMail = nullptr;
    QPushButton *cmdClose = nullptr;
    QPushButton *cmdFind[4] = {};
    QLineEdit *txtFind = nullptr;
    QProgressBar *m_progress = nullptr;
    std::optional<PrintHit> m_lastHit;
    std::unique_ptr<QPrinter> m_printer; // the setup's choices, for the prints after it
};

} // namespace qln
