#pragma once

#include "platform/WindowSystem.h"

#include <QHash>
#include <QObject>

#include <list>

class QWindow;

namespace quorvin {

/// The program's windows as Qt knows them. A window with the type Qt::Tool is a panel.
class QtWindowSystem final : public QObject, public WindowSystem {
    Q_OBJECT
public:
    QtWindowSystem();

    [[nodiscard]] std::vector<std::shared_ptr<AppWindow>> windows() override;
    [[nodiscard]] std::shared_ptr<AppWindow> keyWindow() override;
    [[nodiscard]] Subscription
    onWindowBecameKey(std::function<void(std::shared_ptr<AppWindow>)> handler) override;
    [[nodiscard]] std::vector<Screen> screens() override;
    void activateIgnoringOtherApps() override;

private:
    using Handler = std::function<void(std::shared_ptr<AppWindow>)>;

    std::shared_ptr<AppWindow> wrapped(QWindow* window);
    void focusMoved(QWindow* window);

    QHash<QWindow*, std::shared_ptr<AppWindow>> m_windows;
    std::list<std::weak_ptr<Handler>> m_handlers;
};

} // namespace quorvin
