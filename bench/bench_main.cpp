#include "platform/Clock.h"

#include <QApplication>
#include <benchmark/benchmark.h>

int main(int argc, char **argv)
{
    // The window benchmarks need widgets; no display is needed for them.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qln::gpLocalTime_pin();
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
