#include "shell/StartOptions.h"

#include "shell/ProcessReset.h"
#include "support/QtPrinters.h"

#include <cctype>
#include <string>

#include <gtest/gtest.h>

using namespace qln;

namespace {

struct Case {
    const char *commandLine, *dataPath, *sl;
    qint32 invUid;
    bool itemMode, training;
};

class StartOptions : public ::testing::TestWithParam<Case> {
protected:
    void TearDown() override { test::gpProcess_reset(); }
};

} // namespace

TEST_P(StartOptions, ReadsTheProcessValues)
{
    const Case &c = GetParam();
    test::gpProcess_reset();
    gpStartOptions_read(QString::fromUtf8(c.commandLine));
    EXPECT_EQ(gsDataPath, QString::fromUtf8(c.dataPath));
    EXPECT_EQ(gsSL, QString::fromUtf8(c.sl));
    EXPECT_EQ(glInvUID, c.invUid);
    EXPECT_EQ(gbItemMode, c.itemMode);
    EXPECT_EQ(gbTraining, c.training);
    EXPECT_EQ(gsStation, QStringLiteral("1"));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLines, StartOptions,
    ::testing::Values(
        // A present /InvUID=, even 0 or no number, hides /SL=; keys are case-sensitive.
        Case{"/InvUID=0 /SL=1234567 /ITEM=I", "", "", 0, true, false},
        Case{"/InvUID=12x/SL=1234567/STATION= ", "", "", 12, false, false},
        Case{"/InvUID=99999999999", "", "", 0, false, false},
        Case{"/INVUID=5/SL=1234567", "", "1234567 ", 0, false, false},
        // Only a seven-character key gets its blank.
        Case{"/SL=12345678/ITEM=i", "", "12345678", 0, false, false},
        Case{"/SL=123456", "", "123456", 0, false, false},
        // Training is the upper-cased literal, and a closing "\" spoils it.
        Case{"/DATAPATH=c:\\training", "c:\\training", "", 0, false, true},
        Case{"/DATAPATH=C:\\TRAINING\\", "C:\\TRAINING\\", "", 0, false, false},
        // The data path runs to the next " /", inner blanks kept, trailing ones not.
        Case{"/ITEM=I /DATAPATH=/home/x/my data /SL=1234567", "/home/x/my data", "1234567 ", 0, true, false},
        Case{"/DATAPATH=/srv/data  ", "/srv/data", "", 0, false, false},
        Case{"/DATAPATH= /ITEM=I ", "", "", 0, true, false}),
    // The command line in letters and digits, so that a failure names the case it is.
    [](const ::testing::TestParamInfo<Case> &info) {
        std::string name = std::to_string(info.index);
        for (const char *p = info.param.commandLine; *p; ++p)
            name += std::isalnum(static_cast<unsigned char>(*p)) ? *p : '_';
        return name;
    });
