#include "WhisperServiceFixture.h"

#include <QSignalSpy>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

class EngineLoading : public quorvin::testing::WhisperServiceTest {
protected:
    void placeModel() { model = placeFile(bundle.home + u"/models/ggml-base.bin"_s); }
};

} // namespace

TEST_F(EngineLoading, NothingIsLoadedBeforeTheFirstLoad) {
    EXPECT_FALSE(service->isModelLoaded());
    EXPECT_FALSE(service->isLoading());
    EXPECT_FALSE(service->isTranscribing());
    EXPECT_FALSE(service->simulationMode());
    EXPECT_EQ(service->language, u"auto"_s);
    EXPECT_FALSE(service->translateToEnglish);
    EXPECT_EQ(service->binaryPath(), std::nullopt);
    EXPECT_EQ(service->modelPath(), std::nullopt);
}

TEST_F(EngineLoading, AProgramAndAModelMakeTheServiceReady) {
    placeProgram(under(u"/opt/homebrew/bin/whisper-cpp"_s));
    placeModel();
    load();
    EXPECT_TRUE(service->isModelLoaded());
    EXPECT_FALSE(service->isLoading());
    EXPECT_FALSE(service->simulationMode());
    EXPECT_EQ(service->modelPath(), model);
    const QString cli = under(u"/opt/homebrew/bin/whisper-cli"_s);
    const QString cpp = under(u"/opt/homebrew/bin/whisper-cpp"_s);
    EXPECT_EQ(log.takeText(),
              (QStringList{u"info: Searching for whisper-cpp binary and model..."_s,
                           u"info: Binary check: %1 → not found"_s.arg(cli),
                           u"info: Binary check: %1 → FOUND"_s.arg(cpp),
                           u"info: Found whisper-cpp binary: %1"_s.arg(cpp),
                           u"info: Model dir: %1/models → exists"_s.arg(bundle.home),
                           u"info: Model found: %1"_s.arg(model),
                           u"info: Found whisper model: %1"_s.arg(model),
                           u"info: WhisperService ready (binary + model)"_s}));
}

TEST_F(EngineLoading, TheFirstProgramOfTheTableWins) {
    const QString first = placeProgram(under(u"/opt/homebrew/bin/whisper-cli"_s));
    placeProgram(under(u"/opt/homebrew/bin/whisper-cpp"_s));
    load();
    EXPECT_EQ(service->binaryPath(), first);
    EXPECT_TRUE(runner.calls.empty());
}

TEST_F(EngineLoading, AFileWithoutExecutePermissionIsPassedOver) {
    placeFile(under(u"/opt/homebrew/bin/whisper-cli"_s));
    const QString second = placeProgram(under(u"/usr/local/bin/whisper-cpp"_s));
    load();
    EXPECT_EQ(service->binaryPath(), second);
}

TEST_F(EngineLoading, ADirectoryIsNoProgram) {
    QDir().mkpath(under(u"/opt/homebrew/bin/whisper-cli"_s));
    load();
    EXPECT_EQ(service->binaryPath(), std::nullopt);
}

TEST_F(EngineLoading, AProgramOfLinuxIsFoundInTheHomeDirectory) {
    const QString found = placeProgram(bundle.home + u"/.local/bin/whisper-cli"_s);
    load();
    EXPECT_EQ(service->binaryPath(), found);
}

TEST_F(EngineLoading, WhichIsAskedForOneNameOnlyAfterTheTable) {
    load();
    EXPECT_EQ(runner.calls, (std::vector<quorvin::testing::FakeProcessRunner::Call>{
                                {u"/usr/bin/which"_s, {u"whisper-cpp"_s}}}));
}

TEST_F(EngineLoading, TheAnswerOfWhichIsTrimmed) {
    const QString elsewhere = placeProgram(under(u"/elsewhere/whisper-cpp"_s));
    answerWhich(elsewhere.toUtf8() + '\n');
    load();
    EXPECT_EQ(service->binaryPath(), elsewhere);
}

TEST_F(EngineLoading, AnEmptyAnswerOfWhichIsNoProgram) {
    answerWhich("\n");
    load();
    EXPECT_EQ(service->binaryPath(), std::nullopt);
    EXPECT_FALSE(log.takeText().contains(u"failed"_s));
}

TEST_F(EngineLoading, AnAnswerOfWhichThatCannotRunIsNoProgram) {
    answerWhich(placeFile(under(u"/elsewhere/whisper-cpp"_s)).toUtf8());
    load();
    EXPECT_EQ(service->binaryPath(), std::nullopt);
}

TEST_F(EngineLoading, AFailureOfWhichIsLogged) {
    runner.script(u"/usr/bin/which"_s,
                  {.exitStatus = 1, .standardOutput = {}, .standardError = "none"});
    load();
    EXPECT_EQ(service->binaryPath(), std::nullopt);
    EXPECT_TRUE(
        log.takeText().contains(u"error: 'which whisper-cpp' failed: Whisper process failed: "
                                "whisper-cpp exited with status 1: none"_s));
}

TEST_F(EngineLoading, WhichThatIsMissingIsLogged) {
    runner.failLaunch(u"/usr/bin/which"_s, "No such file or directory");
    load();
    EXPECT_EQ(service->binaryPath(), std::nullopt);
    EXPECT_TRUE(
        log.takeText().contains(u"error: 'which whisper-cpp' failed: No such file or directory"_s));
}

TEST_F(EngineLoading, ASmallModelInAnEarlierDirectoryBeatsALargeOneLater) {
    placeModel();
    placeFile(under(u"/opt/homebrew/share/whisper-cpp/models/ggml-large-v3.bin"_s));
    load();
    EXPECT_EQ(service->modelPath(), model);
}

TEST_F(EngineLoading, WithinADirectoryTheOrderOfNamesDecides) {
    placeModel();
    const QString better = placeFile(bundle.home + u"/models/ggml-medium.bin"_s);
    load();
    EXPECT_EQ(service->modelPath(), better);
}

TEST_F(EngineLoading, EachModelDirectoryIsLogged) {
    QDir().mkpath(bundle.home + u"/models"_s);
    const QString found = placeFile(under(u"/data/whisper-cpp/models/ggml-small.bin"_s));
    load();
    EXPECT_EQ(service->modelPath(), found);
    const QStringList lines = log.takeText();
    EXPECT_TRUE(lines.contains(u"info: Model dir: %1/models → exists"_s.arg(bundle.home)));
    EXPECT_TRUE(
        lines.contains(u"info: Model dir: %1/.local/share/whisper → missing"_s.arg(bundle.home)));
    EXPECT_EQ(lines.filter(u"Model dir: "_s).size(), 9);
}

TEST_F(EngineLoading, WithoutAProgramTheServiceSimulates) {
    placeModel();
    load();
    EXPECT_TRUE(service->isModelLoaded());
    EXPECT_TRUE(service->simulationMode());
    EXPECT_EQ(service->modelPath(), model);
    const QStringList lines = log.takeText();
    EXPECT_TRUE(
        lines.contains(u"error: whisper-cpp binary not found — will use simulation mode"_s));
    EXPECT_EQ(lines.last(), u"info: WhisperService ready (simulation mode)"_s);
}

TEST_F(EngineLoading, WithoutAModelTheServiceSimulates) {
    const QString found = placeProgram(under(u"/opt/homebrew/bin/whisper-cli"_s));
    load();
    EXPECT_TRUE(service->isModelLoaded());
    EXPECT_TRUE(service->simulationMode());
    EXPECT_EQ(service->binaryPath(), found);
    const QStringList lines = log.takeText();
    EXPECT_TRUE(lines.contains(u"error: No model file found in any search path"_s));
    EXPECT_TRUE(lines.contains(u"error: No whisper model found — will use simulation mode"_s));
}

TEST_F(EngineLoading, ALoadLooksAnew) {
    load();
    ASSERT_TRUE(service->simulationMode());
    loadEngine();
    EXPECT_FALSE(service->simulationMode());
    EXPECT_EQ(service->binaryPath(), program);
    ASSERT_TRUE(QFile::remove(model));
    load();
    EXPECT_TRUE(service->simulationMode());
    EXPECT_EQ(service->modelPath(), std::nullopt);
}

TEST_F(EngineLoading, ASecondLoadDuringALoadIsRefused) {
    runner.hold(u"/usr/bin/which"_s);
    service->loadModel();
    ASSERT_TRUE(service->isLoading());
    (void)log.takeText();
    service->loadModel();
    EXPECT_EQ(log.takeText(), (QStringList{u"error: loadModel called while already loading"_s}));
    EXPECT_TRUE(service->isLoading());
    EXPECT_EQ(runner.runningChildren(), 1U);
    runner.finish({});
    scheduler.runPosted();
    EXPECT_FALSE(service->isLoading());
    EXPECT_TRUE(service->isModelLoaded());
}

TEST_F(EngineLoading, NothingCountsAsLoadedDuringALoad) {
    load();
    runner.hold(u"/usr/bin/which"_s);
    service->loadModel();
    EXPECT_FALSE(service->isModelLoaded());
    EXPECT_FALSE(service->simulationMode());
    runner.finish({});
    scheduler.runPosted();
    EXPECT_TRUE(service->isModelLoaded());
}

TEST_F(EngineLoading, TheFieldsTellTheirChanges) {
    const QSignalSpy loading(service.get(), &WhisperService::isLoadingChanged);
    const QSignalSpy loaded(service.get(), &WhisperService::isModelLoadedChanged);
    load();
    EXPECT_EQ(loading.count(), 2);
    EXPECT_EQ(loaded.count(), 1);
}

TEST_F(EngineLoading, AServiceThatGoesDuringALoadIsLeftAlone) {
    runner.hold(u"/usr/bin/which"_s);
    service->loadModel();
    service->loadSpecificModel(u"/any"_s);
    service.reset();
    (void)log.takeText();
    runner.finish({});
    runner.finish({});
    scheduler.runPosted();
    EXPECT_EQ(log.takeText(), QStringList());
}

TEST_F(EngineLoading, ASpecificModelReplacesTheOneFound) {
    loadEngine();
    const QString other = placeFile(under(u"/elsewhere/any-name.bin"_s));
    const QSignalSpy loaded(service.get(), &WhisperService::isModelLoadedChanged);
    service->loadSpecificModel(other);
    EXPECT_EQ(service->modelPath(), other);
    EXPECT_EQ(service->binaryPath(), program);
    EXPECT_FALSE(service->simulationMode());
    EXPECT_FALSE(service->isLoading());
    EXPECT_EQ(loaded.count(), 0); // it stays loaded throughout
    EXPECT_EQ(log.takeText(), (QStringList{u"info: Loaded specific model: %1"_s.arg(other)}));
}

TEST_F(EngineLoading, ASpecificModelLooksForTheProgramOnlyWhenNoneIsKnown) {
    const QString other = placeFile(under(u"/elsewhere/any-name.bin"_s));
    const QString found = placeProgram(under(u"/usr/local/bin/whisper-cli"_s));
    service->loadSpecificModel(other);
    EXPECT_EQ(service->binaryPath(), found);
    EXPECT_TRUE(service->isModelLoaded());
    ASSERT_TRUE(QFile::remove(found));
    service->loadSpecificModel(other);
    EXPECT_EQ(service->binaryPath(), found);
    EXPECT_FALSE(service->simulationMode());
}

TEST_F(EngineLoading, ASpecificModelWithoutAProgramSimulates) {
    const QString other = placeFile(under(u"/elsewhere/any-name.bin"_s));
    service->loadSpecificModel(other);
    scheduler.runPosted();
    EXPECT_EQ(service->modelPath(), other);
    EXPECT_TRUE(service->isModelLoaded());
    EXPECT_TRUE(service->simulationMode());
}

TEST_F(EngineLoading, AMissingSpecificModelSimulatesUntilTheNextLoad) {
    loadEngine();
    const QString missing = under(u"/elsewhere/missing.bin"_s);
    service->loadSpecificModel(missing);
    EXPECT_TRUE(service->isModelLoaded());
    EXPECT_TRUE(service->simulationMode());
    EXPECT_FALSE(service->isLoading());
    EXPECT_EQ(service->modelPath(), model);
    EXPECT_EQ(log.takeText(), (QStringList{u"error: Model not found at: %1"_s.arg(missing)}));
    service->loadSpecificModel(model);
    EXPECT_FALSE(service->simulationMode());
}

TEST_F(EngineLoading, TheLaterOfTwoLoadsStands) {
    placeModel();
    const QString other = placeFile(under(u"/elsewhere/other.bin"_s));
    runner.hold(u"/usr/bin/which"_s);
    service->loadModel();
    service->loadSpecificModel(other);
    ASSERT_EQ(runner.runningChildren(), 2U);
    runner.finish({});
    scheduler.runPosted();
    EXPECT_EQ(service->modelPath(), model);
    runner.finish({});
    scheduler.runPosted();
    EXPECT_EQ(service->modelPath(), other);
}
