#include "services/transcription/WhisperConstants.h"
#include "services/transcription/WhisperError.h"
#include "support/fakes/FakeApplicationBundle.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(WhisperConstants, ProgramsOfHomebrewComeBeforeThoseOfLinux) {
    EXPECT_EQ(WhisperConstants::binarySearchPaths(u"/h"_s),
              (QStringList{u"/opt/homebrew/bin/whisper-cli"_s, u"/opt/homebrew/bin/whisper-cpp"_s,
                           u"/usr/local/bin/whisper-cli"_s, u"/usr/local/bin/whisper-cpp"_s,
                           u"/usr/bin/whisper-cli"_s, u"/usr/bin/whisper-cpp"_s,
                           u"/h/.local/bin/whisper-cli"_s, u"/h/.local/bin/whisper-cpp"_s,
                           u"/home/linuxbrew/.linuxbrew/bin/whisper-cli"_s,
                           u"/home/linuxbrew/.linuxbrew/bin/whisper-cpp"_s}));
}

TEST(WhisperConstants, ModelNamesGoFromTheLargestDown) {
    EXPECT_EQ(WhisperConstants::modelFilenames(),
              (QStringList{u"ggml-large-v3.bin"_s, u"ggml-large-v3-turbo.bin"_s,
                           u"ggml-large-v2.bin"_s, u"ggml-medium.bin"_s, u"ggml-small.bin"_s,
                           u"ggml-base.bin"_s, u"ggml-base.en.bin"_s, u"ggml-small.en.bin"_s}));
}

TEST(WhisperConstants, ModelDirectoriesOfTheUserComeFirst) {
    EXPECT_EQ(WhisperConstants::modelSearchPaths(u"/h"_s, u"/h/.local/share"_s),
              (QStringList{u"/h/models"_s, u"/h/.local/share/whisper"_s,
                           u"/h/Library/Application Support/quorvin/models"_s,
                           u"/opt/homebrew/share/whisper-cpp/models"_s,
                           u"/h/.local/share/quorvin/models"_s, u"/usr/share/whisper-cpp/models"_s,
                           u"/usr/local/share/whisper-cpp/models"_s,
                           u"/home/linuxbrew/.linuxbrew/share/whisper-cpp/models"_s,
                           u"/h/.local/share/whisper-cpp/models"_s}));
}

TEST(WhisperConstants, ADirectoryIsSearchedOnce) {
    const QStringList paths = WhisperConstants::modelSearchPaths(u"/h"_s, u"/usr/share"_s);
    EXPECT_EQ(paths.count(u"/usr/share/whisper-cpp/models"_s), 1);
    EXPECT_EQ(paths.size(), 8);
}

TEST(WhisperConstants, AnUnknownDataDirectoryAddsNone) {
    EXPECT_EQ(WhisperConstants::modelSearchPaths(u"/h"_s, std::nullopt).size(), 8);
}

TEST(WhisperConstants, SupportedLanguagesBeginWithDetection) {
    EXPECT_EQ(
        WhisperConstants::supportedLanguages(),
        (QStringList{u"auto"_s, u"en"_s, u"ru"_s, u"es"_s, u"fr"_s, u"de"_s, u"zh"_s, u"ja"_s}));
}

TEST(EngineLocations, TheStandardOnesAreThoseOfTheUser) {
    quorvin::testing::FakeApplicationBundle bundle;
    bundle.home = u"/h"_s;
    bundle.applicationSupport = u"/data"_s;
    const EngineLocations locations = EngineLocations::standard(bundle);
    EXPECT_EQ(locations.binaries, WhisperConstants::binarySearchPaths(u"/h"_s));
    EXPECT_EQ(locations.modelDirectories, WhisperConstants::modelSearchPaths(u"/h"_s, u"/data"_s));
}

TEST(WhisperError, EachCaseHasItsMessage) {
    using Case = WhisperError::Case;
    EXPECT_STREQ(WhisperError(Case::processFailure, u"it – broke"_s).what(),
                 "Whisper process failed: it – broke");
    EXPECT_STREQ(WhisperError(Case::modelNotFound).what(),
                 "No whisper model file found. Please download a GGML model.");
    EXPECT_STREQ(WhisperError(Case::binaryNotFound).what(),
                 "whisper-cpp binary not found. Install via: brew install whisper-cpp");
    EXPECT_EQ(WhisperError(Case::modelNotFound).errorCase(), Case::modelNotFound);
}
