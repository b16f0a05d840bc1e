#include "platform/qt/QtStatusItem.h"

#include <QKeySequence>
#include <QMenu>
#include <QPixmap>
#include <QSystemTrayIcon>

#include <utility>

namespace quorvin {

QtStatusItem::QtStatusItem() = default;
QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::setMenu(std::vector<Entry> entries) {
    m_menu = std::make_unique<QMenu>();
    m_icon = std::make_unique<QSystemTrayIcon>();
    for (Entry& entry : entries) {
        if (!m_menu->isEmpty()) {
            m_menu->addSeparator();
        }
        QAction* const action = m_menu->addAction(entry.title);
        action->setShortcut(QKeySequence(entry.keyEquivalent));
        QObject::connect(action, &QAction::triggered, action, std::move(entry.action));
    }
    m_icon->setContextMenu(m_menu.get());
}

void QtStatusItem::setImage(const QImage& image, const QString& accessibilityDescription) {
    if (!m_icon) {
        return;
    }
    m_icon->setIcon(QIcon(QPixmap::fromImage(image)));
    m_icon->setToolTip(accessibilityDescription);
    m_icon->show();
}

} // namespace quorvin
