#include "WhisperServiceFixture.h"

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

class LargeOutput : public quorvin::testing::WhisperServiceTest {
protected:
    LargeOutput() { loadEngine(); }

    /// Ten megabytes and a little of lines.
    static QByteArray lines(const QByteArray& line) {
        constexpr qsizetype size = 10 * 1024 * 1024;
        return (' ' + line + " \n").repeated(size / (line.size() + 3) + 1);
    }
};

} // namespace

TEST_F(LargeOutput, OfTheEngineBecomesTextAsEveryOther) {
    engineEnds(lines("speak to me"));
    const auto text = transcribe();
    ASSERT_TRUE(text.has_value());
    EXPECT_TRUE(text->startsWith(u"speak to me speak to me "_s));
    EXPECT_EQ(text->size(), lines("speak to me").size() / 14 * 12 - 1);
    EXPECT_TRUE(temporaryFiles().isEmpty());
}

TEST_F(LargeOutput, OfErrorsDoesNotTouchTheText) {
    engineEnds("text", 0, lines("warning"));
    EXPECT_EQ(transcribe(), u"text"_s);
}

TEST_F(LargeOutput, ThatIsNoUtf8CountsAsEmpty) {
    engineEnds(lines("speak to me") + '\xff', 0, lines("\xfe"));
    EXPECT_EQ(transcribe(), std::nullopt);
    EXPECT_TRUE(temporaryFiles().isEmpty());
}
