#include "theme/HexColor.h"
#include "views/dialogs/AgentLook.h"

#include <gtest/gtest.h>

using namespace quorvin;
using namespace Qt::Literals::StringLiterals;

TEST(AgentLook, ClaudeHasItsOwnAndAllOthersThatOfOpenCode) {
    EXPECT_EQ(AgentLook::accent(u"Claude"_s), hexColor(u"8b5cf6"));
    EXPECT_EQ(AgentLook::initial(u"Claude"_s), u"C"_s);
    for (const QString& name : {u"OpenCode"_s, u"claude"_s, u"Somebody"_s, QString()}) {
        EXPECT_EQ(AgentLook::accent(name), hexColor(u"10b981")) << name.toStdString();
        EXPECT_EQ(AgentLook::initial(name), u"O"_s) << name.toStdString();
    }
}

TEST(AgentLook, TellsTheProcessAndItsTerminal) {
    AgentSessionInfo session;
    session.pid = 4711;
    EXPECT_EQ(AgentLook::sessionDetail(session), u"pid 4711 · no tty"_s);
    session.tty = u"/dev/pts/%1"_s;
    EXPECT_EQ(AgentLook::sessionDetail(session), u"pid 4711 · /dev/pts/%1"_s);
}
