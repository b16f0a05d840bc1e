#include "views/draft/AttachedImagesModel.h"

#include <algorithm>

namespace quorvin {

void AttachedImagesModel::setImages(const QList<QUrl>& images) {
    if (images == m_images) {
        return;
    }
    // Images go one at a time, all equal ones at once, or all, and new ones come at the end:
    // walking along the new list, whatever isn't next in it has gone.
    qsizetype kept = 0;
    while (kept < m_images.size()) {
        if (kept < images.size() && m_images[kept] == images[kept]) {
            ++kept;
            continue;
        }
        qsizetype end = kept + 1;
        while (end < m_images.size() && (kept >= images.size() || m_images[end] != images[kept])) {
            ++end;
        }
        beginRemoveRows({}, static_cast<int>(kept), static_cast<int>(end) - 1);
        m_images.remove(kept, end - kept);
        endRemoveRows();
    }
    if (kept < images.size()) {
        beginInsertRows({}, static_cast<int>(kept), static_cast<int>(images.size()) - 1);
        m_images = images;
        endInsertRows();
    }
    Q_EMIT imagesChanged();
}

int AttachedImagesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_images.size());
}

QVariant AttachedImagesModel::data(const QModelIndex& index, int role) const {
    const bool isKnown = checkIndex(index, CheckIndexOption::IndexIsValid) && role == Qt::UserRole;
    return isKnown ? QVariant(m_images[index.row()]) : QVariant();
}

QHash<int, QByteArray> AttachedImagesModel::roleNames() const {
    return {{Qt::UserRole, "url"}};
}

} // namespace quorvin
