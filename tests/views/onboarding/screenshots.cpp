// Makes pictures of the wizard's steps in two sizes; see support/ScreenshotProgram.h.

#include "OnboardingViewTest.h"
#include "views/support/ScreenshotProgram.h"

#include <cstdlib>
#include <functional>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class WizardScene final : public Scene<OnboardingViewTest> {
public:
    using OnboardingViewTest::Step;
    using Scene::Scene;

    [[nodiscard]] QImage picture(Step step, QSize size,
                                 const std::function<void(WizardScene&)>& act) {
        showWizardAt(step, size);
        advance(500ms);
        act(*this);
        return grab();
    }
    void grant() {
        audioHost.authorization = MicrophoneAuthorization::authorized;
        keyEvents.trusted = true;
        terminalAutomation.permission = true;
        advance(2s);
    }
    void grantMicrophone() {
        audioHost.authorization = MicrophoneAuthorization::authorized;
        advance(1200ms);
    }
    void wait() { advance(4s); }
    void focusByKey() { key(Qt::Key_Tab); }
};

struct Picture {
    QString name;
    WizardScene::Step step;
    std::function<void(WizardScene&)> act;
};

} // namespace

int main(int argc, char** argv) {
    const ScreenshotProgram program(argc, argv);
    const auto nothing = [](WizardScene&) {};
    const QList<Picture> pictures{
        {u"microphone-waiting"_s, WizardScene::Step::microphone, nothing},
        {u"microphone-granted"_s, WizardScene::Step::microphone,
         [](WizardScene& scene) { scene.grantMicrophone(); }},
        {u"accessibility-waiting"_s, WizardScene::Step::accessibility, nothing},
        {u"accessibility-warning"_s, WizardScene::Step::accessibility,
         [](WizardScene& scene) { scene.wait(); }},
        {u"automation-waiting"_s, WizardScene::Step::automation,
         [](WizardScene& scene) { scene.focusByKey(); }},
        {u"automation-granted"_s, WizardScene::Step::automation,
         [](WizardScene& scene) { scene.grant(); }},
        {u"done"_s, WizardScene::Step::done, nothing},
    };
    for (const QSize size : {QSize(580, 850), QSize(1000, 1000)}) {
        for (const QString& theme : program.themes({u"razer"_s, u"latte"_s, u"synthwave"_s})) {
            for (const Picture& picture : pictures) {
                program.save(u"onboarding-%1-%2-%3"_s.arg(theme, picture.name).arg(size.width()),
                             WizardScene(theme).picture(picture.step, size, picture.act));
            }
        }
    }
    return EXIT_SUCCESS;
}
