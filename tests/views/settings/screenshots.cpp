// Saves pictures of all sections of the settings to the directory given, in the themes that follow
// it or else in three of them, at the scale that QT_SCALE_FACTOR says.

#include "SettingsViewTest.h"
#include "theme/GeistFont.h"
#include "views/ViewTypes.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QQuickStyle>

#include <cstdlib>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class Scene final : public quorvin::testing::SettingsViewTest {
public:
    void TestBody() override {}

    void shoot(const QDir& pictures, const QString& themeName, const QString& suffix,
               QSize windowSize) {
        audioHost.deviceList = {{.number = 7, .name = "Desk Microphone", .inputChannelCount = 1}};
        defaults.setString(u"selectedDevice"_s, u"7"_s);
        defaults.setString(u"selectedTheme"_s, themeName);
        terminalAutomation.permission = false;
        theme.setTheme(themeName);
        start();
        for (const double ms : {812.0, 1436.0, 2210.0, 940.0}) {
            PerformanceMetrics::shared().record(PerformanceMetrics::Kind::transcription, ms);
        }
        app().startRecording();
        setLevel(0.7);
        for (int i = 0; i < SettingsTabs::count(); ++i) {
            const auto tab = static_cast<SettingsTabs::SettingsTab>(i);
            showSection(tab, windowSize);
            const QString name = SettingsTabs::title(tab).toLower();
            if (!grab().save(
                    pictures.filePath(u"settings-%1-%2%3.png"_s.arg(themeName, name, suffix)))) {
                std::abort();
            }
        }
        app().cancelRecording();
    }
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    registerViewTypes();
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    QApplication::setFont(GeistFont::font(13));
    QApplication::setQuitOnLastWindowClosed(false);
    QQuickStyle::setStyle(u"Basic"_s);
    const QDir directory(QApplication::arguments().value(1));
    QStringList themes = QApplication::arguments().mid(2);
    if (themes.isEmpty()) {
        themes = {u"razer"_s, u"latte"_s, u"synthwave"_s};
    }
    const QString scale = u"@%1x"_s.arg(qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s));
    for (const QString& theme : themes) {
        Scene().shoot(directory, theme, scale, {1300, 900});
        Scene().shoot(directory, theme, u"-small"_s + scale, {780, 560});
    }
    return EXIT_SUCCESS;
}
