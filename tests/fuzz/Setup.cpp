#include <QtGlobal>

/// Log lines are formatted, as everywhere, and then dropped: each run would write thousands.
extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    return 0;
}
