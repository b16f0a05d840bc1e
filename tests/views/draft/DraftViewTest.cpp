#include "DraftViewTest.h"

#include "views/draft/ImageThumbnailReader.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

void DraftViewTest::showPanel() {
    start();
    show(
        u"Item { required property QtObject appState; width: 580; height: 600;"
        "DraftToggleButton { objectName: 'toggle'; x: 20; expanded: true }"
        "DraftPanel { objectName: 'panel'; appState: parent.appState; x: 20; y: 60; width: 540 } }"_s,
        appState());
}

void DraftViewTest::setEditorFocus() {
    editor()->forceActiveFocus();
}

void DraftViewTest::showEditor() {
    showPanel();
    setEditorFocus();
}

void DraftViewTest::pickImages(const QList<QUrl>& images) {
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (auto* const dialog = qobject_cast<QFileDialog*>(window);
            dialog && dialog->isVisible()) {
            EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFiles);
            QString names;
            for (const QUrl& image : images) {
                names += u'"' + image.toLocalFile() + u"\" "_s;
            }
            dialog->findChild<QLineEdit*>()->setText(names);
            static_cast<QDialog*>(dialog)->accept();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return;
        }
    }
    ADD_FAILURE() << "no picker is open";
}

QList<QUrl> DraftViewTest::pictures(int count, const QColor& color) {
    QImage image(40, 40, QImage::Format_RGB32);
    image.fill(color);
    QList<QUrl> urls;
    for (int i = 0; i < count; ++i) {
        const QString path = directory.filePath(u"shot %1%2.png"_s.arg(color.name()).arg(i));
        EXPECT_TRUE(image.save(path));
        urls.append(QUrl::fromLocalFile(path));
    }
    return urls;
}

void DraftViewTest::finishReading() {
    imageThumbnail::threads().waitForDone();
    QCoreApplication::processEvents();
}

} // namespace quorvin::testing
