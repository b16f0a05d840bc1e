#pragma once

#include <QImage>
#include <QString>

#include <functional>
#include <vector>

namespace quorvin {

/// The program's icon beside the desktop's clock, with a menu. Without effect on a desktop that has
/// no place for such icons. Main thread only.
class StatusItem {
public:
    struct Entry {
        QString title;
        /// The keys that do the same, as the menu shows them: "Ctrl+`". May be empty.
        QString keyEquivalent;
        std::function<void()> action;
    };

    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// The entries from top to bottom, with a separator between each two.
    virtual void setMenu(std::vector<Entry> entries) = 0;
    /// The icon, square and in the colour it is shown in, and what screen readers call it. The item
    /// appears with its first image.
    virtual void setImage(const QImage& image, const QString& accessibilityDescription) = 0;
};

} // namespace quorvin
