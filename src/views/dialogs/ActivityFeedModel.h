#pragma once

#include "models/AppState.h"

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// The activity log as rows that come and go one by one, so that a new entry doesn't build all the
/// others anew. The role `entry` holds an ActivityEntry.
class ActivityFeedModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    /// Oldest first; new ones come at the end while old ones may go at the beginning.
    Q_PROPERTY(
        QList<quorvin::ActivityEntry> entries READ entries WRITE setEntries NOTIFY entriesChanged)

public:
    using QAbstractListModel::QAbstractListModel;

    [[nodiscard]] QList<ActivityEntry> entries() const { return m_entries; }
    void setEntries(const QList<ActivityEntry>& entries);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    /// After the rows have changed.
    void entriesChanged();

private:
    QList<ActivityEntry> m_entries;
};

} // namespace quorvin
