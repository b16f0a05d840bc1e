#pragma once

#include <QMetaType>
#include <QString>

#include <variant>

namespace quorvin {

/// How far the download and installation of a newer build has come. Compared by value.
struct UpdatePhase {
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

    bool operator==(const UpdatePhase&) const = default;
};

} // namespace quorvin
