#include "store/Notes.h"

#include "common/Text.h"
#include "platform/Messages.h"
#include "store/Database.h"
#include "store/RecordOps.h"
#include "store/TableLayout.h"

namespace qln {

namespace {

using N = NotesRecord;

const TableLayout<N> &layout()
{
    static const TableLayout<N> columns = {
        {"FILECODE", "CHAR (1) NOT NULL", &N::FILECODE}, {"REFCODE", "CHAR (15) NOT NULL", &N::REFCODE},
        {"LINENUM", "CHAR (4)", &N::LINENUM},            {"NOTEWIDTH", "SMALLINT", &N::NOTEWIDTH},
        {"NOTETEXT", "CHAR (500)", &N::NOTETEXT},
    };
    return columns;
}

int widthOf(QString N::*field) { return layout().width(layout().ordinal(field)); }

// The reference as the column holds it: up to a line feed, blank padded.
QString reference(const QString &sRefCode)
{
    return layout().fitted(&N::REFCODE, sRefCode.left(sRefCode.indexOf(QLatin1Char('\n'))));
}

void putLineKey(const QString &sFileCode, const QString &ref, int iLine)
{
    gNotes.FILECODE = layout().fitted(&N::FILECODE, sFileCode);
    gNotes.REFCODE = ref;
    gNotes.LINENUM = QStringLiteral("%1").arg(iLine, 4, 10, QLatin1Char('0')); // "000#"
}

} // namespace

void gpNotes_Open(int iTable, const QString &sPath)
{
    Q_UNUSED(sPath);
    gpDB_Table_register(iTable, QStringLiteral("NOTES"), QStringLiteral("Notes"), QStringLiteral("NOTES"),
                        QStringLiteral("Note"));
    gpDB_table_routines_set(iTable, {gpNotes_key, gpNotes_read, gpNotes_write, gfsNotes_values});
    const QString &t = dbuaTable[iTable].sSqlFile;
    const QString indexes = gfsIndex_statement("Create UNIQUE  CLUSTERED Index idx_0", t, "FILECODE, REFCODE, LINENUM");
    gfbDB_TableCreate_missing(iTable, layout().createSql(t), indexes);
}

void gpNotes_key(int iTable, int iKey)
{
    if (iKey == 0)
        gpDB_KeySet(iTable, 3,
                    {{layout().ordinal(&N::FILECODE), gNotes.FILECODE},
                     {layout().ordinal(&N::REFCODE), gNotes.REFCODE},
                     {layout().ordinal(&N::LINENUM), gNotes.LINENUM}});
}

void gpNotes_read(int iTable) { layout().read(iTable, gNotes); }

void gpNotes_write(int iTable) { layout().write(iTable, gNotes); }

QString gfsNotes_values() { return layout().values(gNotes); }

QString gfsNotes_Read(const QString &sFileCode, const QString &sRefCode)
{
    const QString ref = reference(sRefCode).replace(QLatin1Char('\''), QLatin1String("''"));
    const QString sql = QStringLiteral("SELECT *  from ") + dbuaTable[kNotesTable].sSqlFile +
                        QStringLiteral(" WHERE FileCode = '") + sFileCode + QStringLiteral("' AND  refcode = '") + ref +
                        QStringLiteral("' order by linenum ");
    QString text;
    if (!gfbDB_ExecuteSQL(sql, kNotesTable, false))
        return text;
    Recordset &lines = *dbaRecordset[kNotesTable];
    for (; !lines.eof(); lines.moveNext()) {
        gpNotes_read(kNotesTable);
        text += gfsText_rtrim(gNotes.NOTETEXT);
    }
    return text;
}

bool gfbNotes_Save(const QString &sFileCode, const QString &sRefCode, const QString &sText)
{
    const QString ref = reference(sRefCode);
    gfiDB_Execute(QStringLiteral("DELETE FROM Notes WHERE FileCode = '") + sFileCode + QStringLiteral("' AND RefCode = '") +
                  gfsDB_Quote(ref, true, widthOf(&N::REFCODE)) + QLatin1Char('\''));
    const int width = widthOf(&N::NOTETEXT);
    for (int n = 0; qsizetype(n) * width < sText.size(); ++n) {
        putLineKey(sFileCode, ref, n + 1);
        gNotes.NOTETEXT = sText.mid(qsizetype(n) * width, width);
        gNotes.NOTEWIDTH = qint16(gNotes.NOTETEXT.size());
        if (!gfbDB_RecordOp(kNotesTable, kOpInsert, 0)) {
            gfiMsgBox(QStringLiteral("Unable to save notes. File is in use"));
            return false;
        }
    }
    return true;
}

bool gfbNotes_Line(const QString &sFileCode, const QString &sRefCode, int iLine)
{
    putLineKey(sFileCode, reference(sRefCode), iLine);
    return gfbDB_RecordOp(kNotesTable, kOpEqual, 0);
}

} // namespace qln
