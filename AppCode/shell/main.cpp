#include "common/FormLook.h"
#include "common/Options.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ProgramEnd.h"
#include "platform/WidgetMessages.h"
#include "shell/InstanceLock.h"
#include "shell/QlnMain.h"

#include <QApplication>

int main(int argc, char **argv)
{
    qln::gpLocalTime_pin();
    QApplication app(argc, argv);
    QApplication::setApplicationName(qln::kProgramName);
    qln::gpFormLook_install();
    qln::gsAppPath = QCoreApplication::applicationDirPath();
    qln::installWidgetMessages();
    qln::InstanceLock lock;
    try {
        return qln::gfiQlnMain(qln::gfsCommandLine_get(), lock);
    } catch (const qln::ProgramEnd &end) {
        return end.code;
    } catch (const std::exception &error) {
        qln::gfiMsgBox(QStringLiteral("Unexpected Error\r\r") + QString::fromLocal8Bit(error.what()), qln::MsgButtons::OK,
                       qln::MsgIcon::Critical, qln::kProgramName);
        return 1;
    }
}
