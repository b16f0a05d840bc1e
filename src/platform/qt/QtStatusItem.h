#pragma once

#include "platform/StatusItem.h"

#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace quorvin {

/// The status item as Qt's tray icon. Needs the QApplication when it is given its menu.
class QtStatusItem final : public StatusItem {
public:
    QtStatusItem();
    ~QtStatusItem() override;

    void setMenu(std::vector<Entry> entries) override;
    void setImage(const QImage& image, const QString& accessibilityDescription) override;

private:
    std::unique_ptr<QMenu> m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace quorvin
