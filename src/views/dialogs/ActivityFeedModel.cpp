#include "views/dialogs/ActivityFeedModel.h"

#include <algorithm>

namespace quorvin {

namespace {

constexpr int entryRole = Qt::UserRole;

/// How many of the first entries of `before` are gone in `after`.
qsizetype countOfRemoved(const QList<ActivityEntry>& before, const QList<ActivityEntry>& after) {
    if (after.isEmpty()) {
        return before.size();
    }
    const auto kept =
        std::find_if(before.begin(), before.end(), [&](const ActivityEntry& candidate) {
            return candidate.id == after.first().id;
        });
    return kept - before.begin();
}

} // namespace

void ActivityFeedModel::setEntries(const QList<ActivityEntry>& entries) {
    if (entries == m_entries) {
        return;
    }
    const int removed = static_cast<int>(countOfRemoved(m_entries, entries));
    if (removed > 0) {
        beginRemoveRows({}, 0, removed - 1);
        m_entries.remove(0, removed);
        endRemoveRows();
    }
    const int kept = static_cast<int>(m_entries.size());
    if (entries.size() > kept) {
        beginInsertRows({}, kept, static_cast<int>(entries.size()) - 1);
        m_entries = entries;
        endInsertRows();
    }
    Q_EMIT entriesChanged();
}

int ActivityFeedModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant ActivityFeedModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || role != entryRole) {
        return {};
    }
    return QVariant::fromValue(m_entries.at(index.row()));
}

QHash<int, QByteArray> ActivityFeedModel::roleNames() const {
    return {{entryRole, QByteArrayLiteral("entry")}};
}

} // namespace quorvin
