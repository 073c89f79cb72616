#pragma once
#include <QLockFile>
#include <QString>

namespace qln {

// The lock file that one running instance holds for its user on this machine: in the user's
// runtime folder, else in a folder of the user's own under the temporary folder.
QString gfsInstanceLock_path();

// Held for the life of the process by the instance that took it. A lock left behind by a
// process that no longer runs is taken over.
class InstanceLock {
public:
    explicit InstanceLock(const QString &sPath = gfsInstanceLock_path());
    // True when no other instance holds the lock; this one holds it from then on.
    bool gfbTake();

private:
    QLockFile m_lock;
};

// Ends the process, after a critical box, when another instance holds the lock.
void gpInstance_single(InstanceLock &lock);

} // namespace qln
