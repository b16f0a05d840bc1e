#pragma once

#include <QHashFunctions>
#include <QObject>
#include <QString>

#include <cstdint>

namespace quorvin {

/// A microphone as the user chooses it.
struct AudioInputDevice {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString name MEMBER name)

public:
    /// The device number in decimal, or "default" for whatever the system prefers.
    QString id;
    QString name;
    /// 0 for the row "default".
    std::uint32_t deviceID = 0;

    bool operator==(const AudioInputDevice&) const = default;
    friend std::size_t qHash(const AudioInputDevice& device, std::size_t seed = 0) {
        return qHashMulti(seed, device.id, device.name, device.deviceID);
    }
};

} // namespace quorvin
