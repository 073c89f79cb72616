#include "store/Names.h"

#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using N = NameRecord;

const TableLayout<N> &layout()
{
    static const TableLayout<N> columns = {
        {"DeleteFlag", "CHAR (1)", &N::DeleteFlag}, {"ARCode", "CHAR (15) NOT NULL", &N::ARCode},
        {"Business", "CHAR (40)", &N::Business},     {"LastName", "CHAR (25)", &N::LastName},
        {"Zip", "CHAR (10)", &N::Zip},               {"Mail", "CHAR (4)", &N::Mail},
        {"FirstName", "CHAR (20)", &N::FirstName},   {"Address", "CHAR (40)", &N::Address},
        {"City", "CHAR (25)", &N::City},             {"STATE", "CHAR (2)", &N::STATE},
        {"PhoneIndex", "CHAR (15)", &N::PhoneIndex},
    };
    return columns;
}

KeySegment segment(QString N::*field) { return {layout().ordinal(field), gName.*field}; }

} // namespace

void gpNames_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Registry_reserve(iTable);
    gpDB_Table_register(iTable, QStringLiteral("NAMES"), QStringLiteral("Names"), QStringLiteral("NAMES"),
                        QStringLiteral("Names"));
    gpDB_table_routines_set(iTable, {gpNames_key, gpNames_read, gpNames_write, gfsNames_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE  CLUSTERED Index idx_1", t, "ARCode") +
                            gfsIndex_statement("Create Index idx_2", t, "LastName, FirstName, ARCode") +
                            gfsIndex_statement("Create Index idx_3", t, "Zip, ARCode") +
                            gfsIndex_statement("Create Index idx_4", t, "Mail, ARCode") +
                            gfsIndex_statement("Create Index idx_5", t, "Business, ARCode") +
                            gfsIndex_statement("Create Index idx_7", t, "FirstName, ARCode") +
                            gfsIndex_statement("Create Index idx_9", t, "PhoneIndex, ARCode");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpNames_key(int iTable, int iKey)
{
    const KeySegment code = segment(&N::ARCode);
    switch (iKey) {
    case 1: gpDB_KeySet(iTable, 1, {code}); break;
    case 2: gpDB_KeySet(iTable, 3, {segment(&N::LastName), segment(&N::FirstName), code}); break;
    case 3: gpDB_KeySet(iTable, 2, {segment(&N::Zip), code}); break;
    case 4: gpDB_KeySet(iTable, 2, {segment(&N::Mail), code}); break;
    case 5: gpDB_KeySet(iTable, 2, {segment(&N::Business), code}); break;
    case 7: gpDB_KeySet(iTable, 2, {segment(&N::FirstName), code}); break;
    case 9: gpDB_KeySet(iTable, 2, {segment(&N::PhoneIndex), code}); break;
    default: break;
    }
}

void gpNames_read(int iTable) { layout().read(iTable, gName); }

void gpNames_write(int iTable) { layout().write(iTable, gName); }

QString gfsNames_values() { return layout().values(gName); }
void gpNames_row_put(RowSink &sink) { layout().put(gName, sink); }

QVariantList gfaNames_image()
{
    QVariantList image(kNamePhone + 1, QString());
    const N &n = gName;
    int field = 0;
    for (const QString *value : {&n.DeleteFlag, &n.ARCode, &n.Business, &n.LastName, &n.Zip, &n.Mail, &n.FirstName,
                                 &n.Address, &n.City, &n.STATE})
        image[field++] = *value;
    image[kNamePhone] = n.PhoneIndex;
    return image;
}

int gfiNames_column(int iField)
{
    if (iField >= 0 && iField <= kNameState)
        return iField;
    return iField == kNamePhone ? layout().ordinal(&N::PhoneIndex) : -1;
}

QString gfsNames_fitted(QString NameRecord::*field, const QString &text) { return layout().fitted(field, text); }

} // namespace qln
