#include "views/components/ImagePicker.h"

#include <QMimeDatabase>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace quorvin {

namespace {

/// All that the system knows to be images.
QString imageFilter() {
    QStringList patterns;
    const auto types = QMimeDatabase().allMimeTypes();
    for (const QMimeType& type : types) {
        if (type.name().startsWith(u"image/")) {
            patterns += type.globPatterns();
        }
    }
    patterns.removeDuplicates();
    return ImagePicker::tr("Images") + u" ("_s + patterns.join(u' ') + u')';
}

} // namespace

ImagePicker::~ImagePicker() {
    delete m_dialog;
}

void ImagePicker::open() {
    if (m_dialog) {
        m_dialog->raise();
        m_dialog->activateWindow();
        return;
    }
    m_dialog = new QFileDialog(nullptr, tr("Attach Images"),
                               QStandardPaths::writableLocation(QStandardPaths::PicturesLocation));
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setWindowFlags(Qt::Tool | Qt::WindowStaysOnTopHint);
    m_dialog->setFileMode(QFileDialog::ExistingFiles);
    m_dialog->setNameFilter(imageFilter());
    m_dialog->setOption(QFileDialog::HideNameFilterDetails);
    // Not its urlsSelected, which Qt's own dialog doesn't send.
    connect(m_dialog, &QDialog::accepted, this,
            [this, dialog = m_dialog.get()] { Q_EMIT picked(dialog->selectedUrls()); });
    m_dialog->show();
}

} // namespace quorvin
