#pragma once
#include "platform/Connection.h"
#include "platform/DbError.h"
#include "platform/Recordset.h"
#include "platform/ServerAdmin.h"

#include <QString>
#include <QVariant>
#include <functional>
#include <memory>
#include <vector>

// The connection to the shared database and the registry of its tables.
namespace qln {

struct DbTable {
    QString sName;     // short name, e.g. "DepartmentNew"
    QString sFilePath; // data path, "\", base name, ".ZOR": kept for messages
    QString sSqlFile;  // the table's name on the server
    QString sTitle;
    bool bOpen = false;
    int iReserved1 = 0;
    int iKeySegments = 0; // segments last set by the key builder
    int iReserved2 = 0;
    QString sErrorName;
    QString sCreateSql; // ";"-separated
    QString sIndexSql;  // ";"-separated
};

// Connection settings, from "ZOR Settings", section "DATABASE".
inline QString gsDBName, gsDBServer, gsDBUser, gsDBPassword;
inline Provider gDBProvider = Provider::SQLite;

inline bool gbDBConnected = false;
inline bool gbDBTrusted = false;      // nothing sets it: the login branch always runs
inline bool gbLocalMode = false;      // working on the local safe copy
inline bool gbRemoteMode = false;     // no setter in this program
inline bool gbDBCreateAllowed = false; // no setter in this program
inline bool gbDBBulkLoad = false;     // no setter in this program
inline bool gbDBKeyForced = false;    // the data grid seeks by the full key in raw mode
inline int giDBTableCount = 8;
inline QString gsDBLastError;

inline std::vector<DbTable> dbuaTable;
inline std::vector<std::unique_ptr<Recordset>> dbaRecordset;

Connection &dbConnection();
ServerAdmin &dbServer();

// The error a routine left for its caller's handler, as the platform's error object would.
DbError &gDBErr();

bool gfbDB_Init();
bool gfbDB_ServerConnect();
bool gfbDB_Exists();
bool gfbDB_Create();
void gpDB_Connect(const QString &sCatalog);
bool gfbDB_TableExists(const QString &sName);
QString gfsDB_TableList(const QString &sPrefix);
bool gfbDB_TableOpen(int iTable);
QString gfsDB_ServerConfigure();
void gpDB_ServerNameSave();

// Sizes the registry and record-set slots for giDBTableCount tables.
void gpDB_Registry_dim();
// Grows the registry and record-set slots to hold iTable, a table numbered beyond the
// program's own (the names lookup's 99).
void gpDB_Registry_reserve(int iTable);
// Writes the first fields of a table's descriptor, the first step of every table's open.
void gpDB_Table_register(int iTable, const QString &sName, const QString &sBaseName, const QString &sSqlFile,
                         const QString &sTitle);

// Where the start-up trace goes: the program's folder, "52.txt".
void gpDB_Trace(const QString &line);

} // namespace qln
