#include "views/support/ViewApplication.h"

#include "theme/GeistFont.h"
#include "views/ViewTypes.h"

#include <QLoggingCategory>
#include <QQuickStyle>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

std::unique_ptr<QApplication> makeViewApplication(int& argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    auto application = std::make_unique<QApplication>(argc, argv);
    QApplication::setFont(GeistFont::font(13));
    QApplication::setQuitOnLastWindowClosed(false);
    QQuickStyle::setStyle(u"Basic"_s);
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    registerViewTypes();
    return application;
}

} // namespace quorvin::testing
