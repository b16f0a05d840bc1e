#include "theme/GeistFont.h"
#include "views/ViewTypes.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QQuickStyle>

#include <gmock/gmock.h>

using namespace Qt::Literals::StringLiterals;

/// Runs the tests of views without a display, as the program sets its views up.
int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    QApplication::setFont(quorvin::GeistFont::font(13));
    QApplication::setQuitOnLastWindowClosed(false);
    QQuickStyle::setStyle(u"Basic"_s);
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    quorvin::registerViewTypes();
    return RUN_ALL_TESTS();
}
