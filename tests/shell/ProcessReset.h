#pragma once
#include "common/ProcessState.h"
#include "store/Common.h"
#include "store/Database.h"

namespace qln::test {

// The process-wide values as a fresh process has them, with no connection and no tables.
inline void gpProcess_reset()
{
    dbaRecordset.clear();
    dbuaTable.clear();
    dbConnection().close();
    gbDBConnected = false;
    gsDataPath.clear(), gsStation.clear(), gsStationPath.clear(), gsStore.clear();
    gsSL.clear(), gsDept.clear(), gsSalesCode.clear();
    giStore = 0, glInvUID = 0;
    gbTraining = gbItemMode = gbItemID_plain = false;
    gCommon = CommonRecord();
}

} // namespace qln::test
