#include "services/agents/AgentMessage.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString hyphens = QString(49, u'-');
const QString requestHeader = hyphens + u"\n### Request\n"_s + hyphens + u"\n"_s;
const QUrl plainImage = QUrl::fromLocalFile(u"/tmp/shot.png"_s);
const QUrl spacedImage = QUrl::fromLocalFile(u"/tmp/a b.png"_s);

} // namespace

TEST(AgentMessage, ClaudeTextWithoutImagesIsLeftAsItIs) {
    EXPECT_EQ(AgentMessage::compose(AgentType::claude, u" fix\nthis "_s, {}), u" fix\nthis "_s);
    EXPECT_EQ(AgentMessage::compose(AgentType::claude, u""_s, {}), u""_s);
}

TEST(AgentMessage, OpenCodeTextHasTheHeaderEvenWithoutImages) {
    EXPECT_EQ(AgentMessage::compose(AgentType::opencode, u"fix this"_s, {}),
              requestHeader + u"fix this\n"_s);
}

TEST(AgentMessage, BothAgentsGetTheSameWithImages) {
    const QString expected = requestHeader + u"fix this\n\n### Images Attached:\n"
                                             "/tmp/shot.png\n\"/tmp/a b.png\"\n"_s;
    const QList<QUrl> images{plainImage, spacedImage};
    EXPECT_EQ(AgentMessage::compose(AgentType::claude, u"fix this"_s, images), expected);
    EXPECT_EQ(AgentMessage::compose(AgentType::opencode, u"fix this"_s, images), expected);
}

TEST(AgentMessage, EmptyTextGivesNoBodyNotEvenALineBreak) {
    EXPECT_EQ(AgentMessage::compose(AgentType::claude, u""_s, {plainImage}),
              requestHeader + u"\n### Images Attached:\n/tmp/shot.png\n"_s);
    EXPECT_EQ(AgentMessage::compose(AgentType::opencode, u""_s, {}), requestHeader);
}

TEST(AgentMessage, TheHeadersHaveTheirExactLengths) {
    const QString header = AgentMessage::compose(AgentType::opencode, u""_s, {});
    EXPECT_EQ(header.toUtf8().size(), 112);
    const QString withImage = AgentMessage::compose(AgentType::opencode, u""_s, {plainImage});
    EXPECT_EQ(withImage.toUtf8().size(), 112 + 22 + 14);
}

TEST(AgentMessage, APathWithABlankIsQuotedAndNothingElseIsEscaped) {
    EXPECT_EQ(AgentMessage::pathLine(plainImage), u"/tmp/shot.png\n"_s);
    EXPECT_EQ(AgentMessage::pathLine(spacedImage), u"\"/tmp/a b.png\"\n"_s);
    EXPECT_EQ(AgentMessage::pathLine(QUrl::fromLocalFile(u"/tmp/say\"hi\".png"_s)),
              u"/tmp/say\"hi\".png\n"_s);
    EXPECT_EQ(AgentMessage::pathLine(QUrl::fromLocalFile(u"/tmp/tab\there.png"_s)),
              u"/tmp/tab\there.png\n"_s);
}

TEST(AgentMessage, APathStandsAsTheFileIsNamed) {
    EXPECT_EQ(AgentMessage::pathLine(QUrl::fromLocalFile(u"/tmp/50% #1? Grüße.png"_s)),
              u"\"/tmp/50% #1? Grüße.png\"\n"_s);
}
