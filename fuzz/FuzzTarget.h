#pragma once
#include <QByteArray>
#include <QString>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>

// One parser of outside text, fed arbitrary bytes. Built alone with the fuzzer's entry point,
// or registered by name so the ordinary tests can replay the stored corpus through it.
namespace qln::fuzz {

using Entry = int (*)(const std::uint8_t *data, std::size_t size);

bool registerTarget(const char *name, Entry entry);
const std::map<std::string, Entry> &targets();

inline QByteArray bytes(const std::uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), qsizetype(size));
}

// A property the parser must keep; breaking it is a finding, so it ends the run loudly.
void require(bool condition, const char *what);

// A folder of this process for files the targets write; it ends with "/".
const QString &scratchDir();

} // namespace qln::fuzz

#ifdef QUILLON_FUZZ_ENTRY
#define QLN_FUZZ_TARGET(name) extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
#else
#define QLN_FUZZ_TARGET(name)                                                                             \
    static int qlnFuzz_##name(const std::uint8_t *data, std::size_t size);                                \
    [[maybe_unused]] static const bool qlnFuzzRegistered_##name =                                         \
        ::qln::fuzz::registerTarget(#name, qlnFuzz_##name);                                               \
    static int qlnFuzz_##name(const std::uint8_t *data, std::size_t size)
#endif
