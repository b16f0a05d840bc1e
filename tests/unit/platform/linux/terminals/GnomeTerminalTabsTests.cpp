#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QObject>

#include <gmock/gmock.h>
#include <unistd.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// What the terminal gives to the desktop's search, when it does.
class StandInSearchProvider final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Shell.SearchProvider2")
public:
    QStringList activated;

public Q_SLOTS:
    void ActivateResult(const QString& identifier, const QStringList& terms, uint time) {
        activated.append(u"%1 terms %2 time %3"_s.arg(identifier).arg(terms.size()).arg(time));
    }
};

class GnomeTerminalTabsTest : public AutomationTest {
protected:
    GnomeTerminalTabsTest() {
        bus = privateBus.connect();
        addProgram(terminal); // the bus knows the stand-in by the test's own process
        addShell(100, terminal, 1, environment());
        windows.present = {{5001, terminal}, {5002, terminal}};
    }

    [[nodiscard]] Environment environment() const {
        return {{"GNOME_TERMINAL_SERVICE", service.baseService().toUtf8()},
                {"GNOME_TERMINAL_SCREEN", "/org/gnome/Terminal/screen/4790482a_e740_4b29"}};
    }

    void switchShellIntegrationOn() {
        ASSERT_TRUE(service.registerObject(u"/org/gnome/Terminal/SearchProvider"_s, &provider,
                                           QDBusConnection::ExportAllSlots));
    }

    const ProcessID terminal = getpid();
    PrivateBus privateBus;
    QDBusConnection service{privateBus.connect()};
    StandInSearchProvider provider;
};

} // namespace

TEST_F(GnomeTerminalTabsTest, TheTabIsActivatedAsASearchResult) {
    switchShellIntegrationOn();
    const TabFocus answer = focus(u"/dev/pts/1"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::found);
    EXPECT_EQ(answer.terminal, terminal);
    EXPECT_THAT(provider.activated, ElementsAre(u"4790482a-e740-4b29 terms 0 time 123456"_s));
    EXPECT_THAT(windows.raised, IsEmpty());
    EXPECT_THAT(workspace.activated, IsEmpty()) << "the terminal raises the right one itself";
}

TEST_F(GnomeTerminalTabsTest, WithoutShellIntegrationItsLastWindowIsActivated) {
    const TabFocus answer = focus(u"/dev/pts/1"_s);
    EXPECT_EQ(answer.result, TabFocus::Result::notScriptable);
    EXPECT_EQ(answer.terminal, terminal);
    EXPECT_THAT(workspace.activated, ElementsAre(terminal));
}

TEST_F(GnomeTerminalTabsTest, AnotherTerminalThatWasStartedInATabIsTakenForItself) {
    switchShellIntegrationOn();
    addProgram(70);
    addShell(101, 70, 2, environment());
    windows.present.push_back({7777, 70});
    EXPECT_EQ(focus(u"/dev/pts/2"_s).terminal, 70);
    EXPECT_THAT(provider.activated, IsEmpty());
}

#include "GnomeTerminalTabsTests.moc"
