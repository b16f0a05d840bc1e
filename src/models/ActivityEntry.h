#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QString>
#include <QUuid>

namespace quorvin {

/// What an entry of the activity feed is about.
enum class ActivityType {
    recording,
    transcribing,
    sending,
    success,
    error,
    model,
    settings,
    attach,
    session,
    info
};

/// The case's name, as stored and shown in diagnostics.
[[nodiscard]] QString rawValue(ActivityType type);
/// Name of the symbol that stands for the case.
[[nodiscard]] QString icon(ActivityType type);
/// Six hexadecimal digits.
[[nodiscard]] QString colorHex(ActivityType type);

/// One line of the activity feed.
struct ActivityEntry {
    Q_GADGET
    Q_PROPERTY(QString type READ typeName CONSTANT)
    Q_PROPERTY(QString icon READ iconName CONSTANT)
    Q_PROPERTY(QString colorHex READ color CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)
    Q_PROPERTY(QString time READ time CONSTANT)

public:
    QUuid id = QUuid::createUuid();
    ActivityType type = ActivityType::info;
    QString message;
    QDateTime timestamp;

    [[nodiscard]] QString typeName() const { return rawValue(type); }
    [[nodiscard]] QString iconName() const { return icon(type); }
    [[nodiscard]] QString color() const { return colorHex(type); }
    /// Local time as "HH:mm:ss".
    [[nodiscard]] QString time() const;

    bool operator==(const ActivityEntry&) const = default;
};

} // namespace quorvin
