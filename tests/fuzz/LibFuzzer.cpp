// The program that libFuzzer drives: KELPA_FUZZ_TARGET names the target. An environment variable,
// since libFuzzer starts itself again for some of its work.
#include "fuzz/FuzzTarget.h"

#include <QGuiApplication>
#include <QLoggingCategory>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

kelpa::fuzz::FuzzTarget chosenTarget()
{
    const QByteArray name = qgetenv("KELPA_FUZZ_TARGET");
    const auto targets = kelpa::fuzz::fuzzTargets();
    const auto found = std::ranges::find(targets, std::string_view(name.constData()),
                                         &kelpa::fuzz::FuzzTarget::name);
    if (found != targets.end())
        return *found;
    std::fputs("KELPA_FUZZ_TARGET is none of:\n", stderr);
    for (const kelpa::fuzz::FuzzTarget& each : targets)
        std::fprintf(stderr, "%s\n", each.name.data());
    std::_Exit(2);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    // Drawings may have letters, for which the toolkit needs a screen, if only one in memory.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(*argc, *argv);
    // Complaints about damaged files would take most of the time.
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const kelpa::fuzz::FuzzTarget target = chosenTarget();
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    std::copy_n(data, size, bytes.begin());
    target.decode(bytes);
    return 0;
}
