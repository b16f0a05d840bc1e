#include "WhisperServiceFixture.h"
#include "services/transcription/AudioStats.h"

#include <QSignalSpy>

#include <sys/stat.h>

using namespace quorvin;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using quorvin::testing::FakeProcessRunner;

const QString installHint = u"[No whisper-cpp] Install: brew install whisper-cpp"_s;

class Transcription : public quorvin::testing::WhisperServiceTest {
protected:
    Transcription() { loadEngine(); }

    static QString wavPath(const FakeProcessRunner::Call& call) { return call.arguments.value(3); }
};

} // namespace

TEST_F(Transcription, ATakeBecomesText) {
    engineEnds("  Hello \n\nworld\n");
    EXPECT_EQ(transcribe(), u"Hello world"_s);
    ASSERT_EQ(runner.calls.size(), 1U);
    const FakeProcessRunner::Call& call = runner.calls.front();
    const QString wav = wavPath(call);
    EXPECT_EQ(call.program, program);
    EXPECT_EQ(call.arguments, (QStringList{u"-m"_s, model, u"-f"_s, wav, u"-nt"_s, u"-np"_s,
                                           u"-l"_s, u"auto"_s, u"-t"_s, u"4"_s}));
    EXPECT_TRUE(wav.startsWith(bundle.temporary + u"/quorvin_"_s)) << qPrintable(wav);
    EXPECT_EQ(
        log.takeText(),
        (QStringList{u"info: Audio stats: samples=1600, duration=0.10s, peak=0.500000, "
                     "rms=0.500000"_s,
                     u"debug: Wrote 1600 samples to %1"_s.arg(wav),
                     u"info: Running whisper-cpp: %1 %2"_s.arg(program, call.arguments.join(u' ')),
                     u"debug: Raw whisper output: \"Hello world\""_s,
                     u"info: Transcription result: \"Hello world\""_s}));
}

TEST_F(Transcription, LanguageTranslationAndThreadsReachTheEngine) {
    engineEnds("text");
    service->language = u"de"_s;
    service->translateToEnglish = true;
    bundle.processors = 12;
    (void)transcribe();
    EXPECT_EQ(runner.calls.front().arguments.mid(6),
              (QStringList{u"-l"_s, u"de"_s, u"--translate"_s, u"-t"_s, u"6"_s}));
}

TEST_F(Transcription, AChangeDuringARunAppliesToTheNext) {
    runner.hold(program);
    const auto first = start();
    service->language = u"fr"_s;
    const auto second = start();
    EXPECT_EQ(runner.calls.at(0).arguments.value(7), u"auto"_s);
    EXPECT_EQ(runner.calls.at(1).arguments.value(7), u"fr"_s);
}

TEST_F(Transcription, ASpecificModelReachesTheEngine) {
    engineEnds("text");
    const QString other = placeFile(under(u"/elsewhere/other.bin"_s));
    service->loadSpecificModel(other);
    (void)transcribe();
    EXPECT_EQ(runner.calls.front().arguments.value(1), other);
}

TEST_F(Transcription, TheEngineReadsTheTakeFromAPrivateFile) {
    QByteArray seen;
    mode_t mode = 0;
    runner.script(program, [&](const FakeProcessRunner::Call& call) {
        QFile file(wavPath(call));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        seen = file.readAll();
        struct stat status {};
        EXPECT_EQ(::fstat(file.handle(), &status), 0);
        mode = status.st_mode & 07777;
        return ProcessResult{.exitStatus = 0, .standardOutput = "text", .standardError = {}};
    });
    (void)transcribe(std::vector<float>(16000, 1.0F));
    EXPECT_EQ(seen.size(), 32044);
    EXPECT_TRUE(seen.startsWith("RIFF"));
    EXPECT_TRUE(seen.endsWith("\xff\x7f"));
    EXPECT_EQ(mode, 0600U);
}

TEST_F(Transcription, TheFileLivesAsLongAsTheRun) {
    runner.hold(program);
    const auto transcription = start();
    EXPECT_EQ(temporaryFiles().size(), 1);
    runner.finish({.exitStatus = 0, .standardOutput = "text", .standardError = {}});
    scheduler.runPosted();
    EXPECT_TRUE(transcription->isDone);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(Transcription, ANonZeroExitGivesNothingAndLeavesNoFile) {
    engineEnds("half a text", 3, "bad model – really");
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_EQ(log.takeText().last(),
              u"error: whisper-cpp failed: Whisper process failed: whisper-cpp exited with status "
              "3: bad model – really"_s);
    EXPECT_FALSE(service->isTranscribing());
}

TEST_F(Transcription, AFailedLaunchGivesNothingAndLeavesNoFile) {
    runner.failLaunch(program, "Permission denied");
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_EQ(log.takeText().last(), u"error: whisper-cpp failed: Permission denied"_s);
    EXPECT_FALSE(service->isTranscribing());
}

TEST_F(Transcription, AnyOtherFailureOfTheRunGivesNothingAndLeavesNoFile) {
    runner.script(program, [](const FakeProcessRunner::Call&) -> ProcessResult {
        throw std::runtime_error("out of everything");
    });
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_EQ(log.takeText().last(), u"error: whisper-cpp failed: out of everything"_s);
}

TEST_F(Transcription, AnUnwritableDirectoryGivesNothing) {
    bundle.temporary = under(u"/missing"_s);
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_EQ(log.takeText().last(),
              u"error: Failed to write WAV file: No such file or directory"_s);
    EXPECT_FALSE(service->isTranscribing());
}

TEST_F(Transcription, BlankOutputGivesNothing) {
    engineEnds("\n  \n\n");
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_EQ(log.takeText().last(), u"info: Transcription produced no usable text"_s);
}

TEST_F(Transcription, AnInventionOfTheModelGivesNothing) {
    engineEnds(" Thanks for watching\n");
    EXPECT_EQ(transcribe(), std::nullopt);
}

TEST_F(Transcription, OutputThatIsNoUtf8CountsAsEmpty) {
    engineEnds("good start \xff\xfe");
    EXPECT_EQ(transcribe(), std::nullopt);
    engineEnds("cut in a character \xe2\x99");
    EXPECT_EQ(transcribe(), std::nullopt);
    engineEnds("grüße");
    EXPECT_EQ(transcribe(), u"grüße"_s);
}

TEST_F(Transcription, ErrorOutputThatIsNoUtf8CountsAsEmpty) {
    engineEnds("text", 0, "\xff");
    EXPECT_EQ(transcribe(), u"text"_s);
    EXPECT_TRUE(log.takeText().filter(u"stderr"_s).isEmpty());
}

TEST_F(Transcription, ErrorOutputOfAGoodRunIsLogged) {
    engineEnds("text", 0, "loading model");
    EXPECT_EQ(transcribe(), u"text"_s);
    EXPECT_TRUE(log.takeText().contains(u"debug: whisper-cpp stderr: loading model"_s));
}

TEST_F(Transcription, AQuietPeakStartsNoProcess) {
    EXPECT_EQ(transcribe(std::vector<float>(1600, 0.0009F)), std::nullopt);
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_EQ(log.takeText(), (QStringList{u"info: Audio stats: samples=1600, duration=0.10s, "
                                           "peak=0.000900, rms=0.000900"_s,
                                           u"info: Audio too quiet, skipping transcription"_s}));
}

TEST_F(Transcription, TheQuietLimitsThemselvesAreLoudEnough) {
    engineEnds("text");
    std::vector<float> samples(101, 0.0F);
    samples[0] = 0.001F;
    samples[1] = 0.000099999F;
    ASSERT_EQ(audioStats(samples).peak, 0.001F);
    ASSERT_EQ(audioStats(samples).rms, 0.0001F);
    EXPECT_EQ(transcribe(samples), u"text"_s);
    samples.resize(103, 0.0F);
    EXPECT_EQ(transcribe(samples), std::nullopt);
}

TEST_F(Transcription, ALoudClickInSilenceIsStillTooQuiet) {
    std::vector<float> click(960000, 0.0F);
    click[1000] = 0.09F;
    EXPECT_EQ(transcribe(click), std::nullopt);
    EXPECT_TRUE(runner.calls.empty());
}

TEST_F(Transcription, AnEmptyTakeGivesNothing) {
    EXPECT_EQ(transcribe({}), std::nullopt);
    EXPECT_EQ(log.takeText(), (QStringList{u"debug: transcribe called with empty samples"_s}));
}

TEST_F(Transcription, BeforeTheFirstLoadATakeGivesNothing) {
    service = std::make_unique<WhisperService>(bundle, runner, scheduler);
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_EQ(log.takeText(), (QStringList{u"error: transcribe called before model is loaded"_s}));
}

TEST_F(Transcription, IsTranscribingSpansTheRun) {
    runner.hold(program);
    const QSignalSpy changes(service.get(), &WhisperService::isTranscribingChanged);
    const auto transcription = start();
    EXPECT_TRUE(service->isTranscribing());
    EXPECT_EQ(changes.count(), 1);
    runner.finish({});
    scheduler.runPosted();
    EXPECT_FALSE(service->isTranscribing());
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Transcription, AQuietTakeIsNeverTranscribing) {
    const QSignalSpy changes(service.get(), &WhisperService::isTranscribingChanged);
    (void)transcribe(std::vector<float>(1600, 0.0F));
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(Transcription, OverlappingTakesUseTwoFiles) {
    runner.hold(program);
    const auto first = start();
    const auto second = start();
    EXPECT_EQ(temporaryFiles().size(), 2);
    runner.finish({.exitStatus = 0, .standardOutput = "first", .standardError = {}});
    scheduler.runPosted();
    EXPECT_EQ(first->text, u"first"_s);
    EXPECT_FALSE(second->isDone);
    EXPECT_EQ(temporaryFiles(), (QStringList{QFileInfo(wavPath(runner.calls.at(1))).fileName()}));
    runner.finish({.exitStatus = 0, .standardOutput = "second", .standardError = {}});
    scheduler.runPosted();
    EXPECT_EQ(second->text, u"second"_s);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(Transcription, SimulationGivesTheInstallHintAfterHalfASecond) {
    service->loadSpecificModel(u"/missing"_s);
    (void)log.takeText();
    const auto transcription = start();
    EXPECT_TRUE(service->isTranscribing());
    scheduler.advance(499ms);
    EXPECT_FALSE(transcription->isDone);
    scheduler.advance(1ms);
    EXPECT_EQ(transcription->text, installHint);
    EXPECT_FALSE(service->isTranscribing());
    EXPECT_TRUE(runner.calls.empty());
    EXPECT_EQ(log.takeText().last(),
              u"info: Simulation mode: no whisper-cpp binary or model found"_s);
}

TEST_F(Transcription, AServiceThatGoesDuringARunLeavesNoFile) {
    runner.hold(program);
    const auto transcription = start();
    service.reset();
    EXPECT_EQ(temporaryFiles().size(), 1);
    runner.finish({.exitStatus = 0, .standardOutput = "text", .standardError = "note"});
    scheduler.runPosted();
    EXPECT_TRUE(transcription->isDone);
    EXPECT_EQ(temporaryFiles(), QStringList());
    EXPECT_TRUE(log.takeText().filter(u"stderr"_s).isEmpty());
}

TEST_F(Transcription, AServiceThatGoesDuringASimulationIsLeftAlone) {
    service->loadSpecificModel(u"/missing"_s);
    const auto transcription = start();
    service.reset();
    scheduler.advance(500ms);
    EXPECT_EQ(transcription->text, installHint);
}
