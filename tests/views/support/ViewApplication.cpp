#include "views/support/ViewApplication.h"

#include "views/ViewSetup.h"

#include <QLoggingCategory>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

std::unique_ptr<QApplication> makeViewApplication(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    setUpViews();
    return application;
}

} // namespace quorvin::testing
