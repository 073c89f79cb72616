#include "common/FormLook.h"
#include "common/Options.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "platform/Messages.h"
#include "platform/ProgramEnd.h"
#include "platform/WidgetMessages.h"
#include "shell/DesktopOptions.h"
#include "shell/InstanceLock.h"
#include "shell/QlnMain.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // Before any window or database: these answer on a machine without a display too.
    if (const std::optional<QString> answer = qln::gfsDesktopOption_answer(arguments)) {
        std::fputs(answer->toLocal8Bit().constData(), stdout);
        return 0;
    }
    qln::gpLocalTime_pin();
    QApplication app(argc, argv);
    QApplication::setApplicationName(qln::kProgramName);
    QApplication::setApplicationVersion(qln::kProgramVersion);
    QGuiApplication::setDesktopFileName(QStringLiteral("quillon"));
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
