#pragma once

#include <QAbstractListModel>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A list of images as a model with the role "url". When the list changes, the rows that stay are
/// left alone, so that their pictures are not read again.
class AttachedImagesModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QList<QUrl> images READ images WRITE setImages NOTIFY imagesChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] QList<QUrl> images() const { return m_images; }
    void setImages(const QList<QUrl>& images);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void imagesChanged();

private:
    QList<QUrl> m_images;
};

} // namespace quorvin
