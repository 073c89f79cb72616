#include "access/SalesCode.h"
#include "common/Text.h"

#include "access/EncryptionOps.h"
#include "access/LogInSec.h"
#include "common/ProcessState.h"
#include "platform/Clock.h"
#include "store/Database.h"
#include "store/FieldCodec.h"
#include "store/RecordOps.h"
#include "store/TableCreate.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using S = SalesCodeRecord;

// The reset columns stand where the upgrade of an older table adds them, so that a created
// and an upgraded table number their columns alike.
const TableLayout<S> &layout()
{
    static const TableLayout<S> columns = {
        {"UserID", "INTEGER NOT NULL", &S::UserID},
        {"SalesCode", "CHAR (8) NOT NULL", &S::SalesCode},
        {"StoreNumber", "SMALLINT NOT NULL", &S::StoreNumber},
        {"ShortCut", "CHAR (8)", &S::ShortCut},
        {"FullName", "CHAR (30)", &S::FullName},
        {"Password", "CHAR (65)", &S::Password},
        {"Commission", "CHAR (8)", &S::Commission},
        {"Permissions", "CHAR (250)", &S::Permissions},
        {"ARCode", "CHAR (15)", &S::ARCode},
        {"StaffDept", "CHAR (25)", &S::StaffDept},
        {"LastPwd", "CHAR (65)", &S::LastPwd},
        {"Last2ndPwd", "CHAR (65)", &S::Last2ndPwd},
        {"Last3rdPwd", "CHAR (65)", &S::Last3rdPwd},
        {"Last4thPwd", "CHAR (65)", &S::Last4thPwd},
        {"ResetPwdDate", "DATE DEFAULT '12:00:00 AM'", &S::ResetPwdDate},
        {"Status", "CHAR (1)", &S::Status},
        {"ResetQ1", "SMALLINT NOT NULL", &S::ResetQ1},
        {"QA1", "CHAR (20)", &S::QA1},
        {"ResetQ2", "SMALLINT NOT NULL", &S::ResetQ2},
        {"QA2", "CHAR (20)", &S::QA2},
        {"ResetQ3", "SMALLINT NOT NULL", &S::ResetQ3},
        {"QA3", "CHAR (20)", &S::QA3},
    };
    return columns;
}
constexpr int kOldColumnCount = 16;

// The rights of the last code read; all refused until a row is read.
QString &permissions()
{
    static QString rights;
    return rights;
}

int permissionsWidth() { return layout().width(layout().ordinal(&S::Permissions)); }

void upgrade(int iTable)
{
    const QString &t = dbuaTable[iTable].sSqlFile;
    gfbDB_ColumnAdd(iTable, QStringLiteral("ResetQ1"), QStringLiteral("SMALLINT"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("QA1"), QStringLiteral("CHAR(20) DEFAULT ' '"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("ResetQ2"), QStringLiteral("SMALLINT"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("QA2"), QStringLiteral("CHAR(20) DEFAULT ' '"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("ResetQ3"), QStringLiteral("SMALLINT"));
    gfbDB_ColumnAdd(iTable, QStringLiteral("QA3"), QStringLiteral("CHAR(20) DEFAULT ' '"));
    gfiDB_Execute(QStringLiteral("UPDATE ") + t + QStringLiteral(" SET resetQ1= 0 ,resetQ2= 0,resetQ3= 0  "));
    gfiDB_Execute(QStringLiteral("UPDATE ") + t + QStringLiteral(" SET QA1= ' ' ,QA2= ' ',QA3= ' '  "));
}

bool opened(int iTable) { return dbuaTable.size() > size_t(iTable) && dbuaTable[iTable].bOpen && gfrsDB_Current(iTable); }

} // namespace

void gpSalesCode_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("SalesCode"), QStringLiteral("SalesCode"), QStringLiteral("SalesCode"),
                        QStringLiteral("Sales Codes"));
    gpDB_table_routines_set(iTable, {gpSalesCode_key, gpSalesCode_read, gpSalesCode_write, gfsSalesCode_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create Index idx_0", t, "UserID") +
                            gfsIndex_statement("Create UNIQUE CLUSTERED Index idx_1", t, "Salescode, storenumber") +
                            gfsIndex_statement("Create Index idx_2", t, "Shortcut, storenumber");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpSalesCode_key(int iTable, int iKey)
{
    const int store = layout().ordinal(&S::StoreNumber);
    switch (iKey) {
    case 0: gpDB_KeySet(iTable, 1, {{layout().ordinal(&S::UserID), gSalesCode.UserID}}); break;
    case 1:
        gpDB_KeySet(iTable, 2, {{layout().ordinal(&S::SalesCode), gSalesCode.SalesCode}, {store, gSalesCode.StoreNumber}});
        break;
    case 2:
        gpDB_KeySet(iTable, 2, {{layout().ordinal(&S::ShortCut), gSalesCode.ShortCut}, {store, gSalesCode.StoreNumber}});
        break;
    default: break;
    }
}

void gpSalesCode_read(int iTable) { layout().read(iTable, gSalesCode); }

void gpSalesCode_write(int iTable) { layout().write(iTable, gSalesCode); }

QString gfsSalesCode_values() { return layout().values(gSalesCode); }

void gpSalesCode_clear()
{
    gSalesCode = SalesCodeRecord();
    for (QString S::*field : {&S::SalesCode, &S::ShortCut, &S::FullName, &S::Password, &S::Commission, &S::Permissions,
                              &S::ARCode, &S::StaffDept, &S::LastPwd, &S::Last2ndPwd, &S::Last3rdPwd, &S::Last4thPwd,
                              &S::Status, &S::QA1, &S::QA2, &S::QA3})
        gSalesCode.*field = layout().fitted(field, QString());
    gSalesCode.ResetPwdDate = gfdDate_zero();
}

QString gfsSalesCode_fitted(const QString &sCode) { return layout().fitted(&S::SalesCode, sCode); }

bool gfbAccess_tables_open()
{
    if (opened(kSalesCodeTable) && opened(kLogInSecTable))
        return true;
    if (dbuaTable.size() <= size_t(kLogInSecTable))
        return false;
    gpSalesCode_Open(kSalesCodeTable, gsDataPath);
    gpLogInSec_Open(kLogInSecTable, gsDataPath);
    if (!gfbDB_TableOpen(kSalesCodeTable) || !gfbDB_TableOpen(kLogInSecTable))
        return false;
    if (gfrsDB_Current(kSalesCodeTable)->fieldCount() <= kOldColumnCount) {
        upgrade(kSalesCodeTable);
        return gfbDB_TableOpen(kSalesCodeTable);
    }
    return true;
}

void gpSalesCode_Read(const QString &sCode, const QString &sStore)
{
    permissions() = QString(permissionsWidth(), QLatin1Char('N'));
    if (!gfbAccess_tables_open())
        return;
    gSalesCode.SalesCode = gfsSalesCode_fitted(sCode);
    gSalesCode.StoreNumber = qint16(sStore.trimmed().toInt());
    if (gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 1))
        permissions() = gSalesCode.Permissions;
}

bool gfbSalesCode_Permission(int iRight, const QString &sSalesCode)
{
    gpSalesCode_Read(sSalesCode.isEmpty() ? gsSalesCode : sSalesCode, gsStore);
    const QString &rights = permissions();
    return iRight >= 1 && iRight <= rights.size() && rights.at(iRight - 1) == QLatin1Char('Y');
}

namespace {

// The clear text under the first of the row's keys that fits, with the key's rank: 0 the
// current form, 1 the plain form, 2 the oldest.
QString decoded(const QString &sStored, int &rank)
{
    const QString code = gSalesCode.SalesCode, shortCut = gSalesCode.ShortCut;
    const QString store = QString::number(gSalesCode.StoreNumber);
    const QString keys[3] = {gfsRowKey_current(code, store, shortCut), gfsRowKey_plain(code, store, shortCut),
                             gfsRowKey_oldest(code)};
    for (rank = 0; rank < 3; ++rank) {
        const QString clear = gfsDecrypt_Text(sStored, keys[rank]);
        if (!clear.isEmpty())
            return clear;
    }
    return QString();
}

QString currentKey()
{
    return gfsRowKey_current(gSalesCode.SalesCode, QString::number(gSalesCode.StoreNumber), gSalesCode.ShortCut);
}

QString codeWhere(const QString &sCode, const QString &sStore)
{
    const QString code = sCode.trimmed();
    return QStringLiteral("WHERE  SalesCode = '") + gfsDB_Quote(code, true, int(code.size())) + QStringLiteral("' AND storenumber =") +
           sStore.trimmed();
}

} // namespace

bool gfbPassword_LongForm(const QString &sStored)
{
    return !gfsText_rtrim(sStored).mid(38, 15).trimmed().isEmpty();
}

QString gfsPassword_Decode(const QString &sStored)
{
    int rank = 0;
    const QString clear = decoded(sStored.trimmed(), rank);
    if (clear.isEmpty() || rank == 0)
        return clear;
    // Moved to the current key at its first login: no batch conversion is needed.
    gSalesCode.Password = gfsEncrypt_Text(clear, currentKey());
    gfiDB_Execute(QStringLiteral("UPDATE ") + dbuaTable[kSalesCodeTable].sSqlFile + QStringLiteral(" SET Password = '") +
                  gSalesCode.Password + QStringLiteral("' ") + codeWhere(gSalesCode.SalesCode, QString::number(gSalesCode.StoreNumber)));
    return clear;
}

QStringList gfaPassword_History()
{
    QStringList clear;
    for (const QString *stored : {&gSalesCode.LastPwd, &gSalesCode.Last2ndPwd, &gSalesCode.Last3rdPwd, &gSalesCode.Last4thPwd}) {
        int rank = 0;
        clear << decoded(stored->trimmed(), rank);
    }
    return clear;
}

bool gfbSalesCode_Password_set(const QString &sCode, const QString &sStore, const QString &sClear)
{
    if (sClear.trimmed().size() > kPasswordMaxLength || !gfbAccess_tables_open())
        return false;
    gSalesCode.SalesCode = gfsSalesCode_fitted(sCode);
    gSalesCode.StoreNumber = qint16(sStore.trimmed().toInt());
    if (!gfbDB_RecordOp(kSalesCodeTable, kOpEqual, 1))
        return false;
    SalesCodeRecord &r = gSalesCode;
    r.Last4thPwd = r.Last3rdPwd;
    r.Last3rdPwd = r.Last2ndPwd;
    r.Last2ndPwd = r.LastPwd;
    r.LastPwd = r.Password;
    r.Password = layout().fitted(&S::Password, gfsEncrypt_Text(sClear, currentKey()));
    r.ResetPwdDate = QDateTime(Clock::today().addDays(kPasswordLifeDays), QTime(0, 0));
    return gfbDB_RecordOp(kSalesCodeTable, kOpUpdate, 1);
}

void gpSalesCode_lock(const QString &sCode, const QString &sStore)
{
    gfiDB_Execute(QStringLiteral("UPDATE ") + dbuaTable[kSalesCodeTable].sSqlFile + QStringLiteral(" SET Status = '") +
                  QStringLiteral("I") + QStringLiteral("' ") + codeWhere(sCode, sStore));
}

} // namespace qln
