// Saves pictures of the wizard's steps in some themes and sizes to the directory given, at the
// scale that QT_SCALE_FACTOR says.

#include "OnboardingViewTest.h"
#include "theme/GeistFont.h"
#include "views/ViewTypes.h"

#include <QApplication>
#include <QDir>
#include <QLoggingCategory>
#include <QQuickStyle>

#include <cstdlib>
#include <functional>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

class Scene final : public quorvin::testing::OnboardingViewTest {
public:
    using OnboardingViewTest::Step;

    void TestBody() override {}

    void arrange(const QString& themeName, Step step, QSize size) {
        theme.setTheme(themeName);
        showWizardAt(step, size);
        advance(500ms);
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
    void shoot(const QString& path) {
        if (!grab().save(path)) {
            std::abort();
        }
    }
};

struct Picture {
    QString name;
    Scene::Step step;
    std::function<void(Scene&)> act;
};

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QApplication application(argc, argv);
    registerViewTypes();
    QLoggingCategory::setFilterRules(u"com.quorvin.*=false"_s);
    QApplication::setFont(GeistFont::font(13));
    QQuickStyle::setStyle(u"Basic"_s);
    const QDir directory(QApplication::arguments().value(1));

    const auto nothing = [](Scene&) {};
    const QList<Picture> pictures{
        {u"microphone-waiting"_s, Scene::Step::microphone, nothing},
        {u"microphone-granted"_s, Scene::Step::microphone,
         [](Scene& scene) { scene.grantMicrophone(); }},
        {u"accessibility-waiting"_s, Scene::Step::accessibility, nothing},
        {u"accessibility-warning"_s, Scene::Step::accessibility,
         [](Scene& scene) { scene.wait(); }},
        {u"automation-waiting"_s, Scene::Step::automation,
         [](Scene& scene) { scene.focusByKey(); }},
        {u"automation-granted"_s, Scene::Step::automation, [](Scene& scene) { scene.grant(); }},
        {u"done"_s, Scene::Step::done, nothing},
    };
    const QString scale = u"@%1x"_s.arg(qEnvironmentVariable("QT_SCALE_FACTOR", u"1"_s));
    for (const QSize size : {QSize(580, 850), QSize(1000, 1000)}) {
        for (const QString& theme : {u"razer"_s, u"latte"_s, u"synthwave"_s}) {
            for (const Picture& picture : pictures) {
                Scene scene;
                scene.arrange(theme, picture.step, size);
                picture.act(scene);
                scene.shoot(directory.filePath(u"onboarding-%1-%2-%3%4.png"_s.arg(theme)
                                                   .arg(picture.name)
                                                   .arg(size.width())
                                                   .arg(scale)));
            }
        }
    }
    return EXIT_SUCCESS;
}
