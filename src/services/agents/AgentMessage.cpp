#include "services/agents/AgentMessage.h"

using namespace Qt::Literals::StringLiterals;

namespace quorvin::AgentMessage {

namespace {

constexpr QStringView requestHeader = u"-------------------------------------------------\n"
                                      "### Request\n"
                                      "-------------------------------------------------\n";
constexpr QStringView imagesHeader = u"\n### Images Attached:\n";

} // namespace

QString compose(AgentType type, const QString& text, const QList<QUrl>& images) {
    if (type == AgentType::claude && images.isEmpty()) {
        return text;
    }
    QString message = requestHeader.toString();
    if (!text.isEmpty()) {
        message += text + u'\n';
    }
    if (!images.isEmpty()) {
        message += imagesHeader;
        for (const QUrl& image : images) {
            message += pathLine(image);
        }
    }
    return message;
}

QString pathLine(const QUrl& image) {
    const QString path = image.path(QUrl::FullyDecoded);
    return (path.contains(u' ') ? u'"' + path + u'"' : path) + u'\n';
}

} // namespace quorvin::AgentMessage
