#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QRasterWindow>
#include <QUrl>

namespace {

/// Starts a drag of its addresses, or of a text, as soon as it is pressed.
class DragSource final : public QRasterWindow {
public:
    explicit DragSource(const QStringList& contents) : m_contents(contents) {
        setTitle(QStringLiteral("Drag source"));
        setGeometry(0, 0, 100, 100);
    }

protected:
    void mousePressEvent(QMouseEvent*) override {
        QList<QUrl> urls;
        for (const QString& content : m_contents) {
            urls.append(QUrl(content));
        }
        auto* const data = new QMimeData;
        if (urls.first().scheme().isEmpty()) {
            data->setText(m_contents.first());
        } else {
            data->setUrls(urls);
        }
        auto* const drag = new QDrag(this);
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    }

private:
    const QStringList m_contents;
};

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    DragSource window(QCoreApplication::arguments().mid(1));
    window.show();
    return QGuiApplication::exec();
}
