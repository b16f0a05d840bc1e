// Makes pictures of all sections of the settings in two sizes; see support/ScreenshotProgram.h.

#include "SettingsViewTest.h"
#include "views/support/ScreenshotProgram.h"

#include <cstdlib>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class SettingsScene final : public Scene<SettingsViewTest> {
public:
    using Scene::Scene;

    void save(const ScreenshotProgram& program, const QString& prefix, const QString& suffix,
              QSize windowSize) {
        terminalAutomation.permission = false;
        start();
        for (const double ms : {812.0, 1436.0, 2210.0, 940.0}) {
            PerformanceMetrics::shared().record(PerformanceMetrics::Kind::transcription, ms);
        }
        app().startRecording();
        setLevel(0.7);
        for (int i = 0; i < SettingsTabs::count(); ++i) {
            const auto tab = static_cast<Tab>(i);
            showSection(tab, windowSize);
            program.save(prefix + SettingsTabs::title(tab).toLower() + suffix, grab());
        }
        app().cancelRecording();
    }
};

} // namespace

int main(int argc, char** argv) {
    const ScreenshotProgram program(argc, argv);
    for (const QString& theme : program.themes({u"razer"_s, u"latte"_s, u"synthwave"_s})) {
        const QString prefix = u"settings-%1-"_s.arg(theme);
        SettingsScene(theme).save(program, prefix, QString(), {1300, 900});
        SettingsScene(theme).save(program, prefix, u"-small"_s, {780, 560});
    }
    return EXIT_SUCCESS;
}
