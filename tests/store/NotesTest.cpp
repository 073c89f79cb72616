#include "StoreFixture.h"

#include "store/Notes.h"

#include <QFile>

using namespace qln;
using namespace qln::test;

namespace {

class NotesTable : public ConnectedStore {
protected:
    void SetUp() override
    {
        ConnectedStore::SetUp();
        gpNotes_Open(kNotesTable, gsDataPath);
        ASSERT_TRUE(gfbDB_TableOpen(kNotesTable));
    }
};

} // namespace

TEST_F(NotesTable, ANoteRoundTripsWithItsApostrophesAndLineEnds)
{
    const QString note = QStringLiteral("Don't mark down\nbefore Friday");
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&1234"), note));
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("I"), QStringLiteral("&1234")), note);
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("C"), QStringLiteral("&1234")), QString()) << "another file code";

    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("C"), QStringLiteral("O'Brien"), QStringLiteral("Pays cash")));
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("C"), QStringLiteral("O'Brien\nsecond line")), QStringLiteral("Pays cash"));
    EXPECT_EQ(dbaRecordset[kNotesTable]->source(),
              QStringLiteral("SELECT *  from NOTES WHERE FileCode = 'C' AND  refcode = 'O''Brien        ' order by linenum "));
    EXPECT_FALSE(QFile::exists(db.file(QStringLiteral("PVSW.log"))));

    gpNotes_Open(kNotesTable, gsDataPath);
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("I"), QStringLiteral("&1234")), note) << "an existing table is left alone";
}

TEST_F(NotesTable, ALongNoteTakesNumberedLinesAndASaveReplacesIt)
{
    const QString note = QStringLiteral("a").repeated(500) + QStringLiteral("b").repeated(500) + QStringLiteral("tail");
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&77"), note));
    EXPECT_EQ(gfiDB_RecordCount(kNotesTable), 3);
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("I"), QStringLiteral("&77")), note);

    ASSERT_TRUE(gfbNotes_Line(QStringLiteral("I"), QStringLiteral("&77"), 2));
    EXPECT_EQ(gsDB_LastSql(), QStringLiteral("SELECT TOP 1 * FROM NOTES WHERE FILECODE='I' AND REFCODE='&77            ' AND "
                                             "LINENUM='0002' ORDER BY FILECODE"));
    EXPECT_EQ(gNotes.NOTETEXT, QStringLiteral("b").repeated(500));
    EXPECT_EQ(gNotes.NOTEWIDTH, 500);
    ASSERT_TRUE(gfbNotes_Line(QStringLiteral("I"), QStringLiteral("&77"), 3));
    EXPECT_EQ(gNotes.NOTEWIDTH, 4);
    EXPECT_FALSE(gfbNotes_Line(QStringLiteral("I"), QStringLiteral("&77"), 4));

    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&77"), QStringLiteral("short")));
    EXPECT_EQ(gfiDB_RecordCount(kNotesTable), 1);
    ASSERT_TRUE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&77"), QString()));
    EXPECT_EQ(gfiDB_RecordCount(kNotesTable), 0) << "an empty note leaves no rows";
    EXPECT_EQ(gfsNotes_Read(QStringLiteral("I"), QStringLiteral("&77")), QString());
}

TEST_F(NotesTable, ARefusedLineIsToldToTheUser)
{
    ASSERT_TRUE(dbConnection().execute(QStringLiteral("DROP TABLE NOTES")));
    EXPECT_FALSE(gfbNotes_Save(QStringLiteral("I"), QStringLiteral("&1"), QStringLiteral("x")));
    EXPECT_EQ(boxes.texts(), strings({"Unable to save notes. File is in use"}));
}
