#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QString>

#include <functional>

namespace quorvin {

/// Lets one instance of the program run per user and tells it of later starts. Main thread only;
/// needs the application object.
class SingleInstance {
public:
    /// `directory` is the user's own, such as the runtime directory.
    explicit SingleInstance(const QString& directory);

    /// True for the first instance, which goes on, and also when nothing can be kept in the
    /// directory: better two programs than none. False for a later one, when the first was told.
    [[nodiscard]] bool isFirst();
    /// `handler` is called in the first instance at each later start.
    void onLaterStart(std::function<void()> handler);

private:
    void tellFirst() const;

    const QString m_socketPath;
    QLockFile m_lock;
    QLocalServer m_server;
};

} // namespace quorvin
