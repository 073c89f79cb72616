#include "FuzzTarget.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace qln::fuzz {
namespace {

QDir corpusRoot() { return QDir(QStringLiteral(QUILLON_FUZZ_CORPUS)); }

QStringList targetNames()
{
    QStringList names;
    for (const auto &[name, entry] : targets())
        names << QString::fromStdString(name);
    return names;
}

// Every stored input goes through the target it was found by; a crash or a broken property
// ends the test binary, which names the file last started.
class CorpusReplay : public testing::TestWithParam<std::string> {};

TEST_P(CorpusReplay, EveryStoredInputRunsThroughItsParser)
{
    const Entry entry = targets().at(GetParam());
    QDir dir = corpusRoot();
    ASSERT_TRUE(dir.cd(QString::fromStdString(GetParam()))) << "no corpus for " << GetParam();
    const QStringList files = dir.entryList(QDir::Files, QDir::Name);
    EXPECT_FALSE(files.isEmpty());
    for (const QString &name : files) {
        QFile file(dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QByteArray input = file.readAll();
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(entry(reinterpret_cast<const std::uint8_t *>(input.constData()), std::size_t(input.size())), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Fuzz, CorpusReplay, testing::ValuesIn([] {
                             std::vector<std::string> names;
                             for (const auto &[name, entry] : targets())
                                 names.push_back(name);
                             return names;
                         }()),
                         [](const testing::TestParamInfo<std::string> &info) { return info.param; });

TEST(CorpusReplay, EachCorpusFolderHasItsTarget)
{
    const QStringList folders = corpusRoot().entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    QStringList names = targetNames();
    names.sort();
    EXPECT_EQ(folders, names);
}

} // namespace
} // namespace qln::fuzz
