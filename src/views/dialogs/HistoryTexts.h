#pragma once

#include "models/AppState.h"

#include <QLocale>
#include <QObject>
#include <QString>
#include <QTimeZone>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// What the history says of a dictated text.
class HistoryTexts final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// One line: the first 50 characters, followed by "..." when there are more.
    Q_INVOKABLE [[nodiscard]] static QString excerpt(const QString& text);

    /// When it was dictated, how long the take was, and its language where that is known:
    /// "Nov 21, 3:07 PM | 4.2s | en". As the user's system writes dates.
    Q_INVOKABLE [[nodiscard]] static QString meta(const quorvin::HistoryEntry& entry);
    [[nodiscard]] static QString meta(const HistoryEntry& entry, const QLocale& locale,
                                      const QTimeZone& timeZone);

    /// Month, day, hour and minute in the locale's order, with its signs and its digits.
    [[nodiscard]] static QString date(const QDateTime& time, const QLocale& locale);
};

} // namespace quorvin
