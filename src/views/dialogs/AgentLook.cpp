#include "views/dialogs/AgentLook.h"

#include "theme/HexColor.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

QColor AgentLook::accent(const QString& agentName) {
    return hexColor(agentName == u"Claude" ? u"8b5cf6" : u"10b981");
}

QString AgentLook::initial(const QString& agentName) {
    return agentName == u"Claude" ? u"C"_s : u"O"_s;
}

QString AgentLook::sessionDetail(const AgentSessionInfo& session) {
    return u"pid %1 · %2"_s.arg(session.pid).arg(session.tty.value_or(u"no tty"_s));
}

} // namespace quorvin
