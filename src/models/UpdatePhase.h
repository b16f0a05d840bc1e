#pragma once

#include <QMetaType>
#include <QString>

#include <variant>

namespace quorvin {

/// How far the download and installation of a newer build has come. Compared by value.
struct UpdatePhase {
    Q_GADGET
    /// "idle", "downloading", "installing" or "failed".
    Q_PROPERTY(QString kind READ kind CONSTANT)
    /// 0 to 1 while downloading, otherwise 0.
    Q_PROPERTY(double fraction READ fraction CONSTANT)
    /// Empty unless failed.
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    struct Idle {
        bool operator==(const Idle&) const = default;
    };
    struct Downloading {
        double fraction = 0; ///< 0 to 1
        bool operator==(const Downloading&) const = default;
    };
    struct Installing {
        bool operator==(const Installing&) const = default;
    };
    struct Failed {
        QString message; ///< shown to the user
        bool operator==(const Failed&) const = default;
    };

    std::variant<Idle, Downloading, Installing, Failed> value;

    [[nodiscard]] QString kind() const;
    [[nodiscard]] double fraction() const;
    [[nodiscard]] QString message() const;
    /// Downloading or installing: a second installation can't begin.
    [[nodiscard]] bool isBusy() const;

    bool operator==(const UpdatePhase&) const = default;
};

} // namespace quorvin
