#include "DialogsTest.h"

#include "support/OtherProgram.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

void DialogsTest::showOverWindow(const QString& qml) {
    show(u"Rectangle { id: window; required property QtObject appState; width: 580; height: 850;"
         "color: Look.bgBase; "_s +
             qml + u" }"_s,
         appState());
    settle();
}

void DialogsTest::showMainWindow() {
    app().completeOnboarding();
    show(u"MainWindow {}"_s, appState());
    settle();
}

void DialogsTest::remember(const QString& text, const QString& sentTo, double duration,
                           const QString& language) {
    // The store stamps its rows with the real time and tells them apart by seconds.
    OtherProgram(historyPath()).moveTimes("-1 minute");
    app().historyService()->add(text, language, duration, sentTo);
}

void DialogsTest::openPicker(int sessions) {
    for (int i = 0; i < sessions; ++i) {
        runAgent(u"claude"_s, 1001 + i);
    }
    app().setDraftText(u"fix it"_s);
    app().sendToClaude();
    scheduler.advance(std::chrono::seconds(2));
}

void DialogsTest::settle() {
    advance(std::chrono::milliseconds(400));
    (void)grab(); // lays out what has changed
}

void DialogsTest::clickIn(QQuickItem* ancestor, const QString& objectName) {
    const auto found = itemsIn(ancestor, objectName);
    ASSERT_EQ(found.size(), 1) << objectName.toStdString();
    clickAt(middleOf(found.first()));
}

} // namespace quorvin::testing
