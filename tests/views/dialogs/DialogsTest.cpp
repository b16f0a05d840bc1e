#include "DialogsTest.h"

#include <sqlite3.h>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

namespace {

constexpr ProcessID terminalPid = 900;
constexpr ProcessID shellPid = 910;

/// The store stamps its rows with the real time and tells them apart by seconds.
void makeHistoryOlder(const QString& path) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database,
                           "UPDATE history SET created_at = datetime(created_at, '-1 minute')",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
}

} // namespace

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
    makeHistoryOlder(*bundle.applicationSupport + u"/quorvin/history.db"_s);
    app().historyService()->add(text, language, duration, sentTo);
}

void DialogsTest::runAgent(const QString& name, ProcessID pid) {
    workspace.running = {{terminalPid, u"Terminal"_s, u"com.apple.Terminal"_s}};
    processes.parents[shellPid] = terminalPid;
    processes.parents[terminalPid] = 1;
    const QString tty = u"pts/%1"_s.arg(pid % 100);
    processes.rows.push_back({pid, name, tty});
    processes.parents[pid] = shellPid;
    processes.holders[u"/dev/"_s + tty] = {shellPid, pid};
    processes.workingDirectories[pid] = u"/home/dev/project%1"_s.arg(pid);
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

QColor DialogsTest::borderColor(const QQuickItem* rectangle) {
    return rectangle->property("border").value<QObject*>()->property("color").value<QColor>();
}

QRectF DialogsTest::frameOf(const QString& objectName) {
    QQuickItem* const found = item(objectName);
    (void)grab(); // lays out what has changed
    return found->mapRectToScene(found->boundingRect());
}

QList<QQuickItem*> DialogsTest::itemsIn(QQuickItem* ancestor, const QString& objectName) {
    QList<QQuickItem*> found;
    for (QQuickItem* candidate : items(objectName)) {
        if (ancestor->isAncestorOf(candidate)) {
            found.append(candidate);
        }
    }
    return found;
}

void DialogsTest::clickIn(QQuickItem* ancestor, const QString& objectName) {
    const auto found = itemsIn(ancestor, objectName);
    ASSERT_EQ(found.size(), 1) << objectName.toStdString();
    clickAt(middleOf(found.first()));
}

void DialogsTest::expectColor(const QColor& actual, const QColor& expected) {
    EXPECT_NEAR(actual.redF(), expected.redF(), 0.003);
    EXPECT_NEAR(actual.greenF(), expected.greenF(), 0.003);
    EXPECT_NEAR(actual.blueF(), expected.blueF(), 0.003);
    EXPECT_NEAR(actual.alphaF(), expected.alphaF(), 0.003);
}

QColor DialogsTest::withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

} // namespace quorvin::testing
