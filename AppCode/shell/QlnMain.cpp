#include "shell/QlnMain.h"

#include "platform/ModalRunner.h"
#include "platform/ProgramEnd.h"
#include "shell/FrmMenu.h"
#include "shell/InstanceLock.h"
#include "shell/Startup.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

namespace qln {

namespace {

// No promo window is built yet, so every menu button is disabled. Item mode (gbItemMode) is to
// open frmMain alone; until that window exists it gets the menu as well.
void mpFirstWindow_show()
{
    FrmMenu menu(FrmMenu::Windows{});
    if (gfiForm_show_modal(menu) != FrmMenu::kExit)
        return;
    QCoreApplication::processEvents();
    gpProgram_end(0);
}

} // namespace

int gfiQlnMain(const QString &sCommandLine, InstanceLock &lock)
{
    gpInstance_single(lock);
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
