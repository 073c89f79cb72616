#include "FuzzTarget.h"

#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>

namespace qln::fuzz {

namespace {
std::map<std::string, Entry> &registry()
{
    static std::map<std::string, Entry> all;
    return all;
}
} // namespace

bool registerTarget(const char *name, Entry entry)
{
    registry()[name] = entry;
    return true;
}

const std::map<std::string, Entry> &targets() { return registry(); }

void require(bool condition, const char *what)
{
    if (condition)
        return;
    std::fprintf(stderr, "property broken: %s\n", what);
    std::abort();
}

const QString &scratchDir()
{
    static QTemporaryDir dir;
    static const QString path = dir.path() + QLatin1Char('/');
    return path;
}

} // namespace qln::fuzz
