#include "views/compact/QuickCompactPanel.h"

#include "views/compact/CompactDragHostingView.h"

namespace quorvin {

namespace {

class QuickCompactPanel final : public CompactPanel {
public:
    QuickCompactPanel(QQmlEngine& engine, AppState& appState)
        : m_view(new CompactDragHostingView(engine, appState)) {
        m_view->onMoved = [this] {
            if (onMoved) {
                onMoved();
            }
        };
        m_view->onDropped = [this](const QList<QUrl>& files) {
            if (onDropped) {
                onDropped(files);
            }
        };
    }

    void orderFront() override {
        m_view->show();
        m_view->raise();
    }
    [[nodiscard]] QPointF origin() const override { return m_view->position(); }
    void setOrigin(QPointF origin) override { m_view->setPosition(origin.toPoint()); }

private:
    /// One of the window's own buttons may be what closes it, so it goes when that has been dealt
    /// with.
    struct DeleteLater {
        void operator()(CompactDragHostingView* view) const {
            view->onMoved = nullptr;
            view->onDropped = nullptr;
            view->hide();
            view->deleteLater();
        }
    };

    std::unique_ptr<CompactDragHostingView, DeleteLater> m_view;
};

} // namespace

CompactPanelFactory quickCompactPanels(QQmlEngine& engine) {
    return [&engine](AppState& appState) {
        return std::make_unique<QuickCompactPanel>(engine, appState);
    };
}

} // namespace quorvin
