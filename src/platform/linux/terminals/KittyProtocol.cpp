#include "platform/linux/terminals/KittyProtocol.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::kittyProtocol {

namespace {

constexpr QByteArrayView messageBegin = "\x1bP@kitty-cmd";
constexpr QByteArrayView messageEnd = "\x1b\\";

bool isOn(const QJsonObject& window, const QString& tty, const TerminalProcesses& processes) {
    const auto isThere = [&](const QJsonValue& process) {
        return processes.isOn(process[u"pid"_s].toInt(), tty);
    };
    const QJsonArray foreground = window[u"foreground_processes"_s].toArray();
    return isThere(window) || std::any_of(foreground.begin(), foreground.end(), isThere);
}

} // namespace

QByteArray request(const QString& command, const QJsonObject& payload) {
    // The version is that of the oldest kitty that knows what is asked for.
    const QJsonObject request{{u"cmd"_s, command},
                              {u"version"_s, QJsonArray{0, 14, 2}},
                              {u"no_response"_s, false},
                              {u"payload"_s, payload}};
    return messageBegin.toByteArray() + QJsonDocument(request).toJson(QJsonDocument::Compact) +
           messageEnd.toByteArray();
}

bool isWhole(const QByteArray& answer) {
    return answer.endsWith(messageEnd);
}

std::optional<QJsonValue> data(const QByteArray& answer) {
    if (!answer.startsWith(messageBegin) || !isWhole(answer)) {
        return std::nullopt;
    }
    const QByteArray json = answer.sliced(messageBegin.size()).chopped(messageEnd.size());
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    return object[u"ok"_s].toBool() ? std::optional(object[u"data"_s]) : std::nullopt;
}

std::optional<Window> windowOn(const QString& tty, const QJsonValue& listing,
                               const TerminalProcesses& processes) {
    const QJsonArray systemWindows =
        QJsonDocument::fromJson(listing.toString().toUtf8()).array(); // a text with JSON in it
    for (const QJsonValue systemWindow : systemWindows) {
        for (const QJsonValue tab : systemWindow[u"tabs"_s].toArray()) {
            for (const QJsonValue window : tab[u"windows"_s].toArray()) {
                if (isOn(window.toObject(), tty, processes)) {
                    return Window{
                        window[u"id"_s].toInt(),
                        static_cast<WindowID>(systemWindow[u"platform_window_id"_s].toInteger())};
                }
            }
        }
    }
    return std::nullopt;
}

} // namespace quorvin::kittyProtocol
