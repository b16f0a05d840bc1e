#include "FigureReporter.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdlib>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return EXIT_FAILURE;
    }
    // The log of what is measured would drown the errors.
    QLoggingCategory::setFilterRules(QStringLiteral("com.quorvin.*=false"));
    quorvin::bench::FigureReporter reporter;
    const std::size_t count = benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return count == 0 || reporter.hasFailed() ? EXIT_FAILURE : EXIT_SUCCESS;
}
