#include "services/transcription/WhisperCommand.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

QString languageArgument(const QString& language) {
    const QStringList arguments = commandLineArguments({.modelPath = {},
                                                        .wavPath = {},
                                                        .language = language,
                                                        .translateToEnglish = false,
                                                        .processorCount = 8});
    return arguments.value(arguments.indexOf(u"-l"_s) + 1);
}

} // namespace

TEST(WhisperCommand, ArgumentsStandInTheirOrder) {
    EXPECT_EQ(commandLineArguments({.modelPath = u"/m/model.bin"_s,
                                    .wavPath = u"/tmp/a.wav"_s,
                                    .language = u"de"_s,
                                    .translateToEnglish = false,
                                    .processorCount = 12}),
              (QStringList{u"-m"_s, u"/m/model.bin"_s, u"-f"_s, u"/tmp/a.wav"_s, u"-nt"_s, u"-np"_s,
                           u"-l"_s, u"de"_s, u"-t"_s, u"6"_s}));
}

TEST(WhisperCommand, TranslationStandsBetweenLanguageAndThreads) {
    EXPECT_EQ(commandLineArguments({.modelPath = u"m"_s,
                                    .wavPath = u"w"_s,
                                    .language = u"auto"_s,
                                    .translateToEnglish = true,
                                    .processorCount = 4}),
              (QStringList{u"-m"_s, u"m"_s, u"-f"_s, u"w"_s, u"-nt"_s, u"-np"_s, u"-l"_s, u"auto"_s,
                           u"--translate"_s, u"-t"_s, u"4"_s}));
}

TEST(WhisperCommand, LanguagesThatTheEngineSupportsAreNamed) {
    for (const QString& language :
         {u"en"_s, u"ru"_s, u"es"_s, u"fr"_s, u"de"_s, u"zh"_s, u"ja"_s}) {
        EXPECT_EQ(languageArgument(language), language);
    }
}

TEST(WhisperCommand, OtherLanguagesAreDetected) {
    for (const QString& language : {u"auto"_s, u"it"_s, u"uk"_s, u"DE"_s, u""_s}) {
        EXPECT_EQ(languageArgument(language), u"auto"_s) << qPrintable(language);
    }
}

TEST(WhisperCommand, ThreadsFollowTheProcessors) {
    EXPECT_EQ(threadCount(1), 4);
    EXPECT_EQ(threadCount(2), 4);
    EXPECT_EQ(threadCount(9), 4);
    EXPECT_EQ(threadCount(10), 5);
    EXPECT_EQ(threadCount(11), 5);
    EXPECT_EQ(threadCount(12), 6);
    EXPECT_EQ(threadCount(16), 8);
    EXPECT_EQ(threadCount(17), 8);
    EXPECT_EQ(threadCount(128), 8);
}
