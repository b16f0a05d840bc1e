#pragma once

#include <QByteArray>
#include <QString>

#include <compare>
#include <optional>

namespace quorvin {

/// What the update endpoint says about the newest build: a JSON object.
struct UpdateManifest {
    QString version;              ///< "version", with or without a leading "v"
    std::optional<QString> dmg;   ///< "dmg", the address of the build's archive
    std::optional<QString> notes; ///< "notes", not used

    /// Absent when `json` is no object, has no version, or has a value of another type than text.
    [[nodiscard]] static std::optional<UpdateManifest> decode(const QByteArray& json);
    /// The version without one leading "v".
    [[nodiscard]] QString versionNumber() const;
};

/// Compares texts in which runs of digits count as numbers: "1.10" is greater than "1.9".
[[nodiscard]] std::strong_ordering compareNumerically(QStringView left, QStringView right);

} // namespace quorvin
