#include "platform/qt/QtSoundPlayers.h"
#include "support/SoundServer.h"
#include "unit/platform/qt/TestSound.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

using namespace quorvin;
using namespace quorvin::testing;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int patienceMs = 20000;

/// The samples that a sink of the server plays, at 8 kHz.
class Recorder {
public:
    explicit Recorder(const QString& sink) {
        m_process.start(u"parec"_s,
                        {u"--device="_s + sink + u".monitor"_s, u"--raw"_s, u"--format=s16le"_s,
                         u"--rate=8000"_s, u"--channels=1"_s, u"--latency-msec=20"_s});
        waitForSeconds(0.1);
    }
    ~Recorder() {
        m_process.kill();
        m_process.waitForFinished(patienceMs);
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// Listens on for so long.
    void waitForSeconds(double seconds) {
        const qsizetype end = m_bytes.size() + static_cast<qsizetype>(seconds * 8000) * 2;
        while (m_bytes.size() < end) {
            if (!m_process.waitForReadyRead(patienceMs)) {
                throw std::runtime_error("The sound server does not answer");
            }
            m_bytes += m_process.readAllStandardOutput();
        }
    }
    /// Listens until there is a sound.
    void waitForSound() {
        QElapsedTimer timer;
        timer.start();
        while (loudest() < audible) {
            if (timer.elapsed() > patienceMs) {
                throw std::runtime_error("Nothing to hear");
            }
            waitForSeconds(0.05);
        }
    }
    [[nodiscard]] int loudest() const {
        const auto all = samples();
        return std::abs(*std::max_element(all.begin(), all.end(), [](auto a, auto b) {
            return std::abs(static_cast<int>(a)) < std::abs(static_cast<int>(b));
        }));
    }
    /// From the first audible sample to the last.
    [[nodiscard]] double soundSeconds() const {
        const auto all = samples();
        const auto isAudible = [](std::int16_t s) {
            return std::abs(static_cast<int>(s)) > audible;
        };
        const auto first = std::find_if(all.begin(), all.end(), isAudible);
        const auto last = std::find_if(all.rbegin(), all.rend(), isAudible).base();
        return static_cast<double>(last - first) / 8000;
    }

private:
    static constexpr int audible = 100;

    [[nodiscard]] std::vector<std::int16_t> samples() const {
        std::vector<std::int16_t> result(static_cast<std::size_t>(m_bytes.size()) / 2);
        std::memcpy(result.data(), m_bytes.constData(), result.size() * 2);
        return result;
    }

    QProcess m_process;
    QByteArray m_bytes;
};

class SoundServerTest : public ::testing::Test {
protected:
    SoundServerTest() { writeTone(path, wavFormat, 0.6, 0.5); }

    void startServer() { server.start({sinkModule(u"out"_s, 44100, 2)}); }
    /// How many sounds the server is given now.
    int inputs() {
        return static_cast<int>(server.command(u"list-sink-inputs"_s).count(u"index:"_s));
    }
    void waitForInputs(int count) {
        QElapsedTimer timer;
        timer.start();
        while (inputs() != count) {
            ASSERT_LT(timer.elapsed(), patienceMs);
        }
    }

    QTemporaryDir directory;
    QString path = directory.filePath(u"sound.wav"_s);
    SoundServer server;
    QtSoundPlayers players;
};

} // namespace

TEST_F(SoundServerTest, ASoundIsHeardWholeAtItsVolumeAndRate) {
    startServer();
    const auto player = players.make(path);
    player->setVolume(0.22);
    player->setRate(1.5);
    Recorder recorder(u"out"_s);
    player->playFromStart();
    recorder.waitForSound();
    recorder.waitForSeconds(1);
    EXPECT_NEAR(recorder.loudest(), 32767 * 0.5 * 0.22, 200);
    EXPECT_NEAR(recorder.soundSeconds(), 0.6 / 1.5, 0.03);
}

TEST_F(SoundServerTest, ASoundThatRunsStartsAnew) {
    writeTone(path, wavFormat, 3, 0.5);
    startServer();
    const auto player = players.make(path);
    Recorder recorder(u"out"_s);
    player->playFromStart();
    recorder.waitForSound();
    recorder.waitForSeconds(0.5);
    player->playFromStart();
    recorder.waitForSeconds(5);
    EXPECT_LT(recorder.loudest(), 32767 * 0.55) << "two at a time";
    EXPECT_GT(recorder.soundSeconds(), 3.2) << "it did not start anew";
    EXPECT_LT(recorder.soundSeconds(), 5.4) << "one after the other";
}

TEST_F(SoundServerTest, AfterItsEndASoundNoLongerKeepsTheDeviceAwake) {
    startServer();
    const auto player = players.make(path);
    player->playFromStart();
    waitForInputs(1);
    waitForInputs(0);
}

TEST_F(SoundServerTest, ThreeSoundsMayOverlap) {
    startServer();
    const auto first = players.make(path);
    const auto second = players.make(path);
    const auto third = players.make(path);
    for (const auto* player : {&first, &second, &third}) {
        (*player)->playFromStart();
    }
    waitForInputs(3);
}

TEST_F(SoundServerTest, AServerThatDiesTakesNothingAlong) {
    startServer();
    const auto player = players.make(path);
    player->playFromStart();
    waitForInputs(1);
    server.kill();
    for (int i = 0; i < 20; ++i) {
        player->playFromStart();
    }
    startServer();
    // Qt looks for a server every few seconds.
    QElapsedTimer timer;
    timer.start();
    while (inputs() == 0) {
        ASSERT_LT(timer.elapsed(), patienceMs);
        player->playFromStart();
    }
}

TEST_F(SoundServerTest, AFrozenServerHoldsUpNobody) {
    startServer();
    const auto player = players.make(path);
    player->playFromStart();
    waitForInputs(1);
    server.freeze();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 20; ++i) {
        player->playFromStart();
    }
    EXPECT_LT(timer.elapsed(), 1000);
    server.thaw();
    waitForInputs(1);
}
