#pragma once

#include "platform/StatusItem.h"

namespace quorvin::testing {

/// A status item in memory.
class FakeStatusItem final : public StatusItem {
public:
    void setMenu(std::vector<Entry> newEntries) override { entries = std::move(newEntries); }
    void setImage(const QImage& newImage, const QString& accessibilityDescription) override {
        image = newImage;
        description = accessibilityDescription;
    }

    std::vector<Entry> entries;
    QImage image;
    QString description;
};

} // namespace quorvin::testing
