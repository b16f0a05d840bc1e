#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>

#include <gmock/gmock.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

QJsonObject process(ProcessID pid) {
    return {{u"pid"_s, pid}};
}

QJsonObject kittyWindow(int id, ProcessID shell, const QJsonArray& foreground = {}) {
    return {{u"id"_s, id}, {u"pid"_s, shell}, {u"foreground_processes"_s, foreground}};
}

QJsonObject tab(const QJsonArray& kittyWindows) {
    return {{u"windows"_s, kittyWindows}};
}

QJsonObject systemWindow(int number, const QJsonArray& tabs) {
    return {{u"platform_window_id"_s, number}, {u"tabs"_s, tabs}};
}

/// A stand-in for kitty at its socket: keeps the requests and answers as the test says.
class KittyTabsTest : public AutomationTest {
protected:
    KittyTabsTest() {
        QObject::connect(&server, &QLocalServer::newConnection, &server, [this] {
            while (QLocalSocket* const socket = server.nextPendingConnection()) {
                QObject::connect(socket, &QLocalSocket::readyRead, socket,
                                 [this, socket] { answer(*socket); });
            }
        });
        EXPECT_TRUE(server.listen(socketPath()));
        addProgram(60);
        addShell(100, 60, 1, environment());
        addShell(101, 60, 2, environment());
        windows.present = {{5001, 60}, {5002, 60}};
        layout = {systemWindow(5001, {tab({kittyWindow(1, 100)})}),
                  systemWindow(5002, {tab({kittyWindow(2, 900)}),
                                      tab({kittyWindow(3, 901), kittyWindow(4, 101)})})};
    }

    [[nodiscard]] QString socketPath() const { return directory.filePath(u"kitty"_s); }
    [[nodiscard]] Environment environment() const {
        return {{"KITTY_LISTEN_ON", "unix:" + socketPath().toUtf8()}, {"WINDOWID", "5001"}};
    }

    /// The requests so far, as "ls" and "focus-window id:4".
    QStringList requests;
    QJsonArray layout;
    bool isRefusing = false;
    std::optional<QByteArray> rawAnswer; // instead of a proper one
    QLocalServer server;

private:
    void answer(QLocalSocket& socket) {
        m_received += socket.readAll();
        if (!m_received.startsWith("\x1bP@kitty-cmd") || !m_received.endsWith("\x1b\\")) {
            return;
        }
        const QJsonObject request =
            QJsonDocument::fromJson(m_received.sliced(12).chopped(2)).object();
        m_received.clear();
        const QString command = request[u"cmd"_s].toString();
        const QString match = request[u"payload"_s][u"match"_s].toString();
        requests.append(match.isEmpty() ? command : command + u' ' + match);
        QJsonObject reply{{u"ok"_s, !isRefusing}};
        if (command == u"ls") {
            reply[u"data"_s] = QString::fromUtf8(QJsonDocument(layout).toJson());
        }
        socket.write(rawAnswer.value_or(
            "\x1bP@kitty-cmd" + QJsonDocument(reply).toJson(QJsonDocument::Compact) + "\x1b\\"));
    }

    QByteArray m_received;
};

} // namespace

TEST_F(KittyTabsTest, TheTabThatShowsTheDeviceIsFocusedAndItsWindowRaised) {
    const TabFocus answer = focus(u"/dev/pts/2"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::found);
    EXPECT_EQ(answer.terminal, 60);
    EXPECT_THAT(requests, ElementsAre(u"ls"_s, u"focus-window id:4"_s));
    EXPECT_THAT(windows.raised, ElementsAre(5002)) << "and not the one of the environment";
}

TEST_F(KittyTabsTest, AForegroundProcessTellsTheDeviceAsWell) {
    layout = {systemWindow(5002, {tab({kittyWindow(7, 900, {process(901), process(101)})})})};
    EXPECT_EQ(focus(u"/dev/pts/2"_s).result, TabFocus::Result::found);
    EXPECT_THAT(requests, ElementsAre(u"ls"_s, u"focus-window id:7"_s));
}

TEST_F(KittyTabsTest, ATerminalThatWasStartedInKittyIsTakenForItself) {
    addProgram(70);
    addShell(102, 70, 3, environment());
    windows.present.push_back({5003, 70});
    const TabFocus answer = focus(u"/dev/pts/3"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::notScriptable);
    EXPECT_EQ(answer.terminal, 70);
    EXPECT_THAT(requests, ElementsAre(u"ls"_s));
}

TEST_F(KittyTabsTest, WithoutRemoteControlTheWindowIsRaised) {
    addShell(103, 60, 4, {{"WINDOWID", "5002"}});
    EXPECT_EQ(focus(u"/dev/pts/4"_s).result, TabFocus::Result::notScriptable);
    EXPECT_THAT(requests, IsEmpty());
    EXPECT_THAT(windows.raised, ElementsAre(5002));
}

TEST_F(KittyTabsTest, ARefusalLeavesTheWindow) {
    isRefusing = true; // as when a password is asked for
    EXPECT_EQ(focus(u"/dev/pts/2"_s).result, TabFocus::Result::notScriptable);
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(KittyTabsTest, NobodyAtTheSocketLeavesTheWindow) {
    server.close();
    EXPECT_EQ(focus(u"/dev/pts/2"_s).result, TabFocus::Result::notScriptable);
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(KittyTabsTest, RubbishForAnAnswerLeavesTheWindow) {
    for (const QByteArray& rubbish :
         {"no kitty at all\x1b\\"_ba, "\x1bP@kitty-cmd{broken\x1b\\"_ba, "\x1b\\"_ba,
          "\x1bP@kitty-cmd{\"ok\":true,\"data\":[17]}\x1b\\"_ba,
          "\x1bP@kitty-cmd{\"ok\":true,\"data\":\"[{\\\"tabs\\\":3}]\"}\x1b\\"_ba}) {
        rawAnswer = rubbish;
        windows.raised.clear();
        EXPECT_EQ(focus(u"/dev/pts/2"_s).result, TabFocus::Result::notScriptable);
        EXPECT_THAT(windows.raised, ElementsAre(5001));
    }
}

TEST_F(KittyTabsTest, SilenceIsEndedAfterASecond) {
    rawAnswer = "\x1bP@kitty-cmd{"_ba; // and no end
    const auto answer = beginFocus(u"/dev/pts/2"_s);
    ASSERT_TRUE(eventually([this] { return !requests.isEmpty(); }));
    scheduler.advance(999ms);
    EXPECT_FALSE(answer->has_value());
    scheduler.advance(1ms);
    EXPECT_TRUE(eventually([&] { return answer->has_value(); }));
    EXPECT_THAT(windows.raised, ElementsAre(5001));
}

TEST_F(KittyTabsTest, ASocketWithoutAFileIsReachedToo) {
    const QByteArray name = "quorvin-test-" + directory.path().toUtf8().replace('/', '-');
    QLocalServer abstract;
    abstract.setSocketOptions(QLocalServer::AbstractNamespaceOption);
    ASSERT_TRUE(abstract.listen(QString::fromUtf8(name)));
    addShell(104, 60, 5, {{"KITTY_LISTEN_ON", "unix:@" + name}});
    const auto answer = beginFocus(u"/dev/pts/5"_s);
    EXPECT_TRUE(eventually([&] { return abstract.hasPendingConnections(); }));
}

TEST_F(KittyTabsTest, TheAutomationMayGoWhileKittyIsAsked) {
    rawAnswer = ""_ba;
    const auto answer = beginFocus(u"/dev/pts/2"_s);
    ASSERT_TRUE(eventually([this] { return !requests.isEmpty(); }));
    endAutomation();
    ASSERT_TRUE(answer->has_value());
    EXPECT_EQ((*answer)->result, TabFocus::Result::notFound);
    EXPECT_THAT(windows.raised, IsEmpty());
}
