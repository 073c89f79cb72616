#include "store/ServerCheck.h"

#include "common/ProcessState.h"
#include "config/DataPath.h"
#include "platform/Messages.h"
#include "store/Database.h"

#include <QFileInfo>

#include <vector>

namespace qln {

namespace {

// The point-of-sale programs offer local work instead; every other program asks.
bool mfbRetry_asked()
{
    return gfiMsgBox(QStringLiteral("Server not found. Check Server and Network Connections.\r\n Retry?"), MsgButtons::YesNo,
                     MsgIcon::Question, QStringLiteral("Network Error")) == MsgAnswer::Yes;
}

bool mbTablesLost = false;
std::vector<const Recordset *> maUnreadSets; // by table: the set a reopen left, until a read replaces it

} // namespace

void gpDB_Tables_lost(bool bLost)
{
    mbTablesLost = bLost;
    if (!bLost)
        maUnreadSets.clear();
}

// After a lost connection: the tables again, 1 to 7; the first that fails ends the pass.
void gpDB_Tables_reopen()
{
    mbTablesLost = false;
    for (DbTable &table : dbuaTable)
        table.bOpen = false;
    maUnreadSets.clear();
    for (int iTable = 1; iTable <= 7 && iTable < int(dbuaTable.size()); ++iTable) {
        if (!gfbDB_TableOpen(iTable))
            return;
        gpDB_Set_unread_mark(iTable);
    }
}

void gpDB_Tables_refresh()
{
    if (!mbTablesLost || gbLocalMode)
        return;
    if (dbConnection().reachable())
        gpDB_Tables_reopen();
}

bool gfbDB_Set_unread(int iTable)
{
    const Recordset *current = iTable >= 0 && iTable < int(dbaRecordset.size()) ? dbaRecordset[size_t(iTable)].get() : nullptr;
    return current && iTable < int(maUnreadSets.size()) && maUnreadSets[size_t(iTable)] == current;
}

void gpDB_Set_unread_mark(int iTable)
{
    if (iTable < 0 || iTable >= int(dbaRecordset.size()))
        return;
    if (maUnreadSets.size() < dbaRecordset.size())
        maUnreadSets.resize(dbaRecordset.size(), nullptr);
    maUnreadSets[size_t(iTable)] = dbaRecordset[size_t(iTable)].get();
}

// A new set may take the freed one's address: the mark goes with the read, not the address.
void gpDB_Set_read(int iTable)
{
    if (iTable >= 0 && iTable < int(maUnreadSets.size()))
        maUnreadSets[size_t(iTable)] = nullptr;
}

bool gfbServer_Check()
{
    if (gbLocalMode)
        return true;
    for (;;) {
        const QString dataPath = gDataPath().DataPath;
        if (!dataPath.isEmpty() && QFileInfo(dataPath).isDir()) {
            if (dbConnection().lost())
                gpDB_Tables_reopen();
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
