#include "store/Database.h"

#include "common/ProcessState.h"
#include "config/ProfileFile.h"
#include "platform/Messages.h"
#include "platform/ProgramEnd.h"
#include "platform/Settings.h"
#include "shell/Shell.h"
#include "store/ReadOnlyRun.h"
#include "store/ServerCheck.h"
#include "store/StatementLog.h"
#include "store/TableCreate.h"

#include <QDir>
#include <QSysInfo>

namespace qln {

namespace {

const QString kDatabaseSection = QStringLiteral("DATABASE");
const QString kRemoteDatabase = QStringLiteral("ZORRemote");
const QString kSuiteInstance = QStringLiteral("\\ZORSERVER");

QString setting(const QString &key, const QString &defaultValue = QString())
{
    return GetSetting(kZorSettings, kDatabaseSection, key, defaultValue);
}

QString computerName() { return QSysInfo::machineHostName(); }

bool gbServerDefaulted = false;

ConnectionInfo connectionInfo(const QString &catalog)
{
    ConnectionInfo info;
    info.provider = gDBProvider;
    info.server = gsDBServer;
    info.database = catalog;
    info.user = gsDBUser;
    info.password = gsDBPassword;
    info.dataPath = gsDataPath;
    return info;
}

// The file that stands for a database beside its data: SQLite's own file; a server keeps
// its files to itself, so there the database list answers instead.
bool databaseFileExists(const QString &folder, const QString &name)
{
    if (gDBProvider != Provider::SQLite) {
        for (const ServerAdmin::Entry &e : dbServer().databases())
            if (e.name.compare(name, Qt::CaseInsensitive) == 0)
                return true;
        return false;
    }
    return QFileInfo::exists(QDir(folder).filePath(name + QStringLiteral(".db")));
}

} // namespace

Connection &dbConnection()
{
    // Lives as long as the process: the program never closes it, and Qt's drivers are
    // gone before static destructors run.
    static Connection *connection = new Connection;
    return *connection;
}

ServerAdmin &dbServer()
{
    static ServerAdmin server;
    return server;
}

DbError &gDBErr()
{
    static DbError error;
    return error;
}

namespace {
bool readOnlyRun = false;
} // namespace

void gpReadOnlyRun_set(bool bOn) { readOnlyRun = bOn; }
bool gfbReadOnlyRun() { return readOnlyRun; }

void gpDB_Trace(const QString &line)
{
    if (readOnlyRun)
        return;
    gpFile_append(QDir(gsAppPath.isEmpty() ? QDir::currentPath() : gsAppPath).filePath(QStringLiteral("52.txt")), {line});
}

void gpDB_Registry_dim()
{
    dbuaTable.assign(giDBTableCount + 2, DbTable());
    dbaRecordset.clear();
    dbaRecordset.resize(giDBTableCount + 2);
}

void gpDB_Registry_reserve(int iTable)
{
    if (dbuaTable.size() <= size_t(iTable))
        dbuaTable.resize(size_t(iTable) + 1);
    if (dbaRecordset.size() <= size_t(iTable))
        dbaRecordset.resize(size_t(iTable) + 1);
}

void gpDB_Table_register(int iTable, const QString &sName, const QString &sBaseName, const QString &sSqlFile,
                         const QString &sTitle)
{
    DbTable &t = dbuaTable[iTable];
    t.sName = sName;
    t.sFilePath = gsDataPath + QStringLiteral("\\") + sBaseName + QStringLiteral(".ZOR");
    t.sSqlFile = sSqlFile;
    t.sTitle = sTitle;
    t.bOpen = false;
    t.iReserved1 = 0;
}

bool gfbDB_Init()
{
    bool result = true;
    gpDB_Registry_dim();
    gfbDB_ServerConnect();
    // A server that does not answer fails the walk of its databases: told, and the walk is
    // tried again until it answers.
    bool exists = gfbDB_Exists();
    while (gDBErr().isSet()) {
        result = false;
        gfiMsgBox(QStringLiteral("Database Error\r") + gDBErr().description, MsgButtons::OK);
        exists = gfbDB_Exists();
    }
    if (!exists) {
        gpDB_Trace(QStringLiteral("Database Create"));
        if (!gfbDB_Create()) {
            gfiMsgBox(QStringLiteral("DataBase Create failed call Support"), MsgButtons::OK, MsgIcon::None,
                      QStringLiteral("Database Error"));
            gpProgram_end(1);
        }
    }
    return result;
}

QString gfsDB_ServerConfigure()
{
    const QString none;
    gfiShell_run(gsAppPath, QStringLiteral("ZORDataConfiguration.exe"), none, none, none, none, none, none, none, none, none);
    return setting(QStringLiteral("Server"));
}

void gpDB_ServerNameSave()
{
    if (readOnlyRun)
        return;
    // Kept with the data: the other programs of the suite read the server from ZOR.INI.
    const QString key = gbRemoteMode ? QStringLiteral("SERVERNAMELOCAL") : QStringLiteral("SERVERNAME");
    WritePrivateProfileString(kDatabaseSection, key, gsDBServer, QDir(gsDataPath).filePath(QStringLiteral("ZOR.INI")));
}

bool gfbDB_ServerConnect()
{
    gsDBName = setting(QStringLiteral("DBName"));
    gDBProvider = providerFromName(setting(QStringLiteral("Provider")));
    const bool embedded = gDBProvider == Provider::SQLite;

    gsDBServer = setting(QStringLiteral("Server"));
    // An embedded database needs no server: a blank one means this machine.
    if (gsDBServer.trimmed().isEmpty() && !embedded) {
        gsDBServer = gfsDB_ServerConfigure();
        if (gsDBServer.trimmed().isEmpty())
            gpProgram_end(0);
    }
    if (gbTraining)
        gsDBName = setting(QStringLiteral("TrainingDB"));
    else if (!gbLocalMode && !gbRemoteMode)
        gsDBName = setting(QStringLiteral("DBName"));
    else
        gsDBName = kRemoteDatabase;
    gsDBPassword = setting(QStringLiteral("Password")).trimmed();
    gsDBUser = setting(QStringLiteral("UserName"), QStringLiteral("sa"));
    gpDB_Trace(gsDBName);

    gbServerDefaulted = false;
    if (gsDBServer.trimmed().isEmpty() && !embedded)
        gsDBServer = gfsDB_ServerConfigure();
    if (gsDBServer.trimmed().isEmpty() || gbLocalMode || gbRemoteMode) {
        gsDBServer = computerName() + kSuiteInstance;
        gpDB_Trace(gsDBServer);
        gbServerDefaulted = true;
    }

    gpDB_Trace(QStringLiteral("Servername = ") + gsDBServer);
    gpDB_Trace(QStringLiteral("set Server "));
    gpDB_Trace(QStringLiteral("Server set "));
    gpDB_Trace(QStringLiteral("Connect now ") + gsDBServer + QLatin1Char(' ') + gsDBUser + QLatin1Char(' ') + gsDBPassword);

    auto failure = [](const DbError &error) {
        gfiMsgBox(error.description + QString::number(qint32(quint32(error.number))), MsgButtons::OK, MsgIcon::Critical,
                  QStringLiteral("ZOR MSDE"));
        return false;
    };
    dbServer().connect(connectionInfo(QString()));
    const int status = dbServer().status();
    gpDB_Trace(QStringLiteral("Server Status = ") + QString::number(status));
    if (status != 1)
        return failure(dbServer().lastError());

    if (gbServerDefaulted)
        gpDB_ServerNameSave();
    const int slash = gsDBServer.indexOf(QLatin1Char('\\'));
    if (slash < 0) // the host is cut at the instance's "\": without one the cut fails
        return failure({5, QStringLiteral("Invalid procedure call or argument"), kProgramName});
    const QString host = gsDBServer.left(slash);
    gpDB_Trace(QStringLiteral("Server Name = ") + host);
    // The clock is set by the system's own time service on this platform.
    gpDB_Trace(QStringLiteral("Time verified"));
    return true;
}

bool gfbDB_Exists()
{
    if (gbLocalMode || gbRemoteMode) {
        if (!databaseFileExists(QStringLiteral("c:/zorsafe"), kRemoteDatabase))
            return false;
        gsDBName = kRemoteDatabase;
    } else if (gbTraining) {
        const QString training = QStringLiteral("Training");
        if (!databaseFileExists(gsDataPath, training))
            return false;
        gsDBName = training;
    } else if (gsDBName.trimmed().isEmpty() && gDBProvider == Provider::SQLite) {
        const QString pattern = QStringLiteral("ZORDATA*.db");
        if (!QDir(gsDataPath).entryList({pattern}, QDir::Files).isEmpty())
            gsDBName = (gsDataPath + QStringLiteral("\\") + pattern).toUpper();
    }
    gDBErr().clear();
    if (gsDBName.trimmed().isEmpty())
        return false;
    const QString wanted = gsDBName.trimmed().toUpper();
    const QList<ServerAdmin::Entry> databases = dbServer().databases();
    if (dbServer().lastError().isSet()) {
        gDBErr() = dbServer().lastError();
        return false;
    }
    for (const ServerAdmin::Entry &e : databases)
        if (!e.system && e.name.trimmed().toUpper() == wanted)
            return true;
    return false;
}

bool gfbDB_Create()
{
    if (!gbDBCreateAllowed) {
        gfiMsgBox(QStringLiteral("Database not found.\r\nIf you are trying to connect to an existing database then run the "
                                 "Database Configuration.\r\nTo create a new database or convert files from Pervasive run "
                                 "Marvane"),
                  MsgButtons::OK, MsgIcon::Critical);
        gpProgram_end(1);
    }
    return false; // creating a database is the suite's main program's job
}

void gpDB_Connect(const QString &sCatalog)
{
    dbConnection().setLostObserver([](const DbError &) {
        gbDBConnected = false;
        gpDB_Tables_lost();
        gfiMsgBox(QStringLiteral("Failed to connect to database. "), MsgButtons::OK, MsgIcon::Critical,
                  QStringLiteral("Database Connection Error"));
    });
    gpDB_Tables_lost(false);
    dbConnection().open(connectionInfo(sCatalog.isEmpty() ? gsDBName : sCatalog));
    gbDBConnected = dbConnection().state() == 1;
}

bool gfbDB_TableExists(const QString &sName)
{
    for (const ServerAdmin::Entry &e : dbServer().tables(gsDBName))
        if (!e.system && e.name.compare(sName.trimmed(), Qt::CaseInsensitive) == 0)
            return true;
    return false;
}

QString gfsDB_TableList(const QString &sPrefix)
{
    QString list;
    for (const ServerAdmin::Entry &e : dbServer().tables(gsDBName))
        if (!e.system && e.name.startsWith(sPrefix, Qt::CaseInsensitive))
            list += e.name + QLatin1Char('|');
    return list;
}

bool gfbDB_TableOpen(int iTable)
{
    bool result = true;
    bool qualified = false;
    DbTable &table = dbuaTable[iTable];
    gbDBConnected = dbConnection().state() == 1;
    if (!gbDBConnected)
        gpDB_Connect(QString());
    if (!gbDBConnected) {
        gfiMsgBox(QStringLiteral("Failed to connect to database. "), MsgButtons::OK, MsgIcon::Critical,
                  QStringLiteral("Database Connection Error"));
    } else if (!table.sSqlFile.trimmed().isEmpty()) {
        // A table missing under its bare name is tried once more under the owner "zor.".
        for (int pass = 0; pass < 2; ++pass) {
            auto recordset = std::make_unique<Recordset>();
            const QString source = QStringLiteral("SELECT TOP 1 * FROM ") + (qualified ? QStringLiteral("zor.") : QString()) +
                                   table.sSqlFile;
            if (recordset->open(dbConnection(), source)) {
                dbaRecordset[iTable] = std::move(recordset);
                qualified = false;
                break;
            }
            gDBErr().clear();
            gfbDB_TableCreate(iTable);
            const DbError present = gDBErr();
            if (!present.description.startsWith(QLatin1String("Invalid object name"))) {
                gfiMsgBox(QString::number(qint32(quint32(present.number))) + QStringLiteral("    Open Table Error    ") +
                              present.description + QStringLiteral("\r"));
                result = false;
                qualified = false;
            } else {
                qualified = true;
            }
            if (!qualified || !gbDBConnected)
                break;
        }
    }
    table.bOpen = result;
    return result;
}

} // namespace qln
