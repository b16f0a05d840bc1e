#include "platform/qt/QtSoundPlayers.h"
#include "unit/platform/qt/TestSound.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QTemporaryDir>

#include <cstdlib>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

class QtSoundPlayersTest : public ::testing::Test {
protected:
    QtSoundPlayersTest() {
        writeTone(path, wavFormat, 0.2);
        // Each of these would lead to a server of the machine.
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"}) {
            qputenv(name, directory.path().toLocal8Bit());
        }
        qputenv("PULSE_SERVER", "unix:" + directory.filePath(u"native"_s).toLocal8Bit());
    }
    static qsizetype threadCount() {
        return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }
    /// Ends the process with all its clean-up, as a return from `main` does.
    [[noreturn]] static void end(int status) {
        std::exit(status); // NOLINT(concurrency-mt-unsafe): with the sound thread still there
    }
    /// In a process of its own, to see it end: makes three players, plays each of them twice, and
    /// ends as the program does. The exit code is 0 unless something held up this thread.
    [[noreturn]] void playAndExit() const {
        {
            QElapsedTimer timer;
            timer.start();
            QtSoundPlayers players;
            const auto first = players.make(path);
            const auto second = players.make(path);
            const auto third = players.make(path);
            for (const auto* player : {&first, &second, &third, &first, &second, &third}) {
                (*player)->playFromStart();
            }
            if (timer.elapsed() > 5000) {
                end(1);
            }
        }
        end(0);
    }

    QTemporaryDir directory;
    QString path = directory.filePath(u"sound.wav"_s);
};

} // namespace

TEST_F(QtSoundPlayersTest, AFileThatIsNoSoundHasNoPlayer) {
    QtSoundPlayers players;
    EXPECT_FALSE(players.make(directory.filePath(u"missing.mp3"_s)));
    EXPECT_FALSE(players.make(directory.path()));
}

TEST_F(QtSoundPlayersTest, MakingPlayersStartsNothing) {
    const qsizetype before = threadCount();
    QtSoundPlayers players;
    const auto player = players.make(path);
    ASSERT_TRUE(player);
    player->setVolume(0.22);
    player->setRate(1.5);
    EXPECT_EQ(threadCount(), before);
}

TEST_F(QtSoundPlayersTest, WithoutASoundServerPlayingIsSilent) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(playAndExit(), ::testing::ExitedWithCode(0), "");
}

TEST_F(QtSoundPlayersTest, ASoundServerThatNeverAnswersHoldsUpNobody) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    QElapsedTimer timer;
    timer.start();
    EXPECT_EXIT(
        {
            QLocalServer server; // takes connections and says nothing
            if (!server.listen(directory.filePath(u"native"_s))) {
                end(2);
            }
            playAndExit();
        },
        ::testing::ExitedWithCode(0), "");
    EXPECT_LT(timer.elapsed(), 15000) << "the process did not end";
}
