#include "shell/QlnMain.h"

#include "common/ProcessState.h"
#include "config/frmSM_DATAPATH2.h"
#include "platform/ModalRunner.h"
#include "platform/ProgramEnd.h"
#include "promo/frmDeptMain.h"
#include "promo/frmGroup.h"
#include "promo/frmMain.h"
#include "shell/FrmMenu.h"
#include "shell/InstanceLock.h"
#include "shell/Startup.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace qln {

namespace {

void mpItemPromos_show()
{
    frmMain form;
    gfiForm_show_modal(form);
}

void mpDeptPromos_show()
{
    frmDeptMain form;
    gfiForm_show_modal(form);
}

void mpGroupPromos_show()
{
    frmGroup form;
    gfiForm_show_modal(form);
}

// Started for one item, the item promos window is the whole run; otherwise the menu, whose
// "Exit" ends the process.
void mpFirstWindow_show()
{
    if (gbItemMode) {
        mpItemPromos_show();
        return;
    }
    FrmMenu::Windows windows;
    windows[0] = mpItemPromos_show;
    windows[1] = mpDeptPromos_show;
    windows[2] = mpGroupPromos_show;
    FrmMenu menu(windows);
    if (gfiForm_show_modal(menu) != FrmMenu::kExit)
        return;
    QCoreApplication::processEvents();
    gpProgram_end(0);
}

} // namespace

int gfiQlnMain(const QString &sCommandLine, InstanceLock &lock)
{
    gpInstance_single(lock);
    gpDataPath_window_install();
    const bool started = gfbStartup_prepare(sCommandLine);
    if (started)
        mpFirstWindow_show();
    gpStore_text_set();
    gpForms_unload();
    return started ? 0 : 1;
}

void gpForms_unload()
{
    // Closing cannot fail the way unloading could, so one pass does what the repeated one did.
    QList<QPointer<QWidget>> forms;
    for (QWidget *form : QApplication::topLevelWidgets())
        forms << form;
    for (const QPointer<QWidget> &form : forms) {
        if (form)
            form->close();
        QCoreApplication::processEvents();
    }
}

} // namespace qln
