#include "store/ServerCheck.h"

#include "common/ProcessState.h"
#include "config/DataPath.h"
#include "platform/Messages.h"
#include "store/Database.h"

#include <QFileInfo>

namespace qln {

namespace {

// The point-of-sale programs offer local work instead; every other program asks.
bool mfbRetry_asked()
{
    return gfiMsgBox(QStringLiteral("Server not found. Check Server and Network Connections.\r\n Retry?"), MsgButtons::YesNo,
                     MsgIcon::Question, QStringLiteral("Network Error")) == MsgAnswer::Yes;
}

// After a lost connection: the tables again, 1 to 7; the first that fails ends the pass.
void mpTables_reopen()
{
    for (DbTable &table : dbuaTable)
        table.bOpen = false;
    for (int iTable = 1; iTable <= 7 && iTable < int(dbuaTable.size()); ++iTable)
        if (!gfbDB_TableOpen(iTable))
            return;
}

} // namespace

bool gfbServer_Check()
{
    if (gbLocalMode)
        return true;
    for (;;) {
        const QString dataPath = gDataPath().DataPath;
        if (!dataPath.isEmpty() && QFileInfo(dataPath).isDir()) {
            if (dbConnection().lost())
                mpTables_reopen();
            return true;
        }
        if (dataPath == kSafeFolder) {
            gbLocalMode = true;
            return true;
        }
        if (!mfbRetry_asked())
            return false;
    }
}

} // namespace qln
