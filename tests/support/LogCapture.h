#pragma once

#include <QLoggingCategory>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

namespace quorvin::testing {

/// What is logged to one category while this lives, debug lines included. One at a time.
class LogCapture {
public:
    using Line = std::pair<QtMsgType, QString>;

    explicit LogCapture(const char* category) : m_category(category) {
        QLoggingCategory::setFilterRules(QLatin1String(category) + QStringLiteral(".debug=true"));
        s_current = this;
        m_previous = qInstallMessageHandler(&LogCapture::handle);
    }
    ~LogCapture() {
        qInstallMessageHandler(m_previous);
        s_current = nullptr;
        QLoggingCategory::setFilterRules(QString());
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// The lines since the last call, in order.
    [[nodiscard]] std::vector<Line> take() { return std::exchange(m_lines, {}); }
    /// The same as text, with the level in front: "info: Searching...".
    [[nodiscard]] QStringList takeText() {
        QStringList text;
        for (const auto& [type, line] : take()) {
            text.append(level(type) + line);
        }
        return text;
    }

private:
    static QString level(QtMsgType type) {
        switch (type) {
        case QtDebugMsg:
            return QStringLiteral("debug: ");
        case QtInfoMsg:
            return QStringLiteral("info: ");
        default:
            return QStringLiteral("error: ");
        }
    }

    static void handle(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (qstrcmp(context.category, s_current->m_category) == 0) {
            s_current->m_lines.emplace_back(type, text);
        } else {
            s_current->m_previous(type, context, text);
        }
    }

    static inline LogCapture* s_current = nullptr;
    const char* m_category;
    QtMessageHandler m_previous = nullptr;
    std::vector<Line> m_lines;
};

} // namespace quorvin::testing
