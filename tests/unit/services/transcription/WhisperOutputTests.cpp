#include "services/transcription/WhisperOutput.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;
using quorvin::testing::LogCapture;

namespace {

class WhisperOutput : public ::testing::Test {
protected:
    LogCapture log{"com.quorvin.WhisperService"};
};

} // namespace

TEST_F(WhisperOutput, LinesAreTrimmedAndJoined) {
    EXPECT_EQ(parseWhisperOutput(u"  Hello \n\nworld\n"_s), u"Hello world"_s);
    EXPECT_EQ(log.takeText(), (QStringList{u"debug: Raw whisper output: \"Hello world\""_s}));
}

TEST_F(WhisperOutput, CarriageReturnsAndTabsGo) {
    EXPECT_EQ(parseWhisperOutput(u"\tHello \r\n \t \r\n world\r\n"_s), u"Hello world"_s);
}

TEST_F(WhisperOutput, BlanksWithinALineStay) {
    EXPECT_EQ(parseWhisperOutput(u"a  b"_s), u"a  b"_s);
}

TEST_F(WhisperOutput, TextInBracketsStays) {
    EXPECT_EQ(parseWhisperOutput(u"[00:00] see [1]\n"_s), u"[00:00] see [1]"_s);
}

TEST_F(WhisperOutput, BlankLinesAreNoText) {
    EXPECT_EQ(parseWhisperOutput(u"\n  \n\t\n"_s), std::nullopt);
    EXPECT_EQ(parseWhisperOutput(u""_s), std::nullopt);
    EXPECT_EQ(log.takeText(), QStringList());
}

TEST_F(WhisperOutput, AnInventionSpreadOverLinesIsNoText) {
    EXPECT_EQ(parseWhisperOutput(u" Thanks\n for watching\n"_s), std::nullopt);
    EXPECT_EQ(log.takeText(),
              (QStringList{u"debug: Raw whisper output: \"Thanks for watching\""_s,
                           u"info: Filtered hallucination: \"Thanks for watching\""_s}));
}
