#include "shell/InstanceLock.h"

#include "common/ProcessState.h"
#include "platform/Messages.h"
#include "platform/ProgramEnd.h"

#include <QDir>
#include <QFileInfo>

#include <unistd.h>

namespace qln {

namespace {
const QString kCompanyName = QStringLiteral("ZOR");
} // namespace

QString gfsInstanceLock_path()
{
    QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (folder.isEmpty())
        folder = QDir::tempPath() + QStringLiteral("/quillon-") + QString::number(::getuid());
    return folder + QStringLiteral("/quillon.lock");
}

InstanceLock::InstanceLock(const QString &sPath) : m_lock(sPath)
{
    // A session lasts hours: only a dead owner makes the lock stale, never its age.
    m_lock.setStaleLockTime(0);
}

bool InstanceLock::gfbTake()
{
    const QString folder = QFileInfo(m_lock.fileName()).absolutePath();
    if (!QDir(folder).exists() && QDir().mkpath(folder))
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return m_lock.tryLock();
}

void gpInstance_single(InstanceLock &lock)
{
    if (lock.gfbTake())
        return;
    gfiMsgBox(kProgramName + QStringLiteral(" is already running.\rThis Program Can Only Be Runing Once On This Machine"),
              MsgButtons::OK, MsgIcon::Critical, kCompanyName);
    gpProgram_end(1);
}

} // namespace qln
