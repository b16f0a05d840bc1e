#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// Asks the user for image files, any number of them, while the program goes on. The dialog is a
/// panel, so that it stays in compact mode, too. Needs a QApplication.
class ImagePicker : public QObject {
    Q_OBJECT
    QML_ELEMENT

public:
    using QObject::QObject;
    ~ImagePicker() override;

    /// Brings a dialog that is open already to the front.
    Q_INVOKABLE void open();

Q_SIGNALS:
    void picked(const QList<QUrl>& images);

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace quorvin
