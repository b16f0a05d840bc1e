#pragma once

#include <QLoggingCategory>
#include <QStringList>

#include <utility>

namespace quorvin::testing {

/// Collects what the speech service logs while this object lives, debug lines included, each as its
/// level and its text: "info: Searching...".
class LogCapture {
public:
    LogCapture() {
        QLoggingCategory::setFilterRules(QStringLiteral("com.quorvin.WhisperService.debug=true"));
        current = this;
        m_previous = qInstallMessageHandler(&LogCapture::record);
    }
    ~LogCapture() {
        qInstallMessageHandler(m_previous);
        current = nullptr;
        QLoggingCategory::setFilterRules(QString());
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// What came since the last call.
    [[nodiscard]] QStringList take() { return std::exchange(m_lines, {}); }

private:
    static void record(QtMsgType type, const QMessageLogContext& context, const QString& text) {
        if (qstrcmp(context.category, "com.quorvin.WhisperService") != 0) {
            current->m_previous(type, context, text);
            return;
        }
        const QString level = type == QtDebugMsg  ? QStringLiteral("debug: ")
                              : type == QtInfoMsg ? QStringLiteral("info: ")
                                                  : QStringLiteral("error: ");
        current->m_lines.append(level + text);
    }

    inline static LogCapture* current = nullptr;
    QtMessageHandler m_previous = nullptr;
    QStringList m_lines;
};

} // namespace quorvin::testing
