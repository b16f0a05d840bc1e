#pragma once

#include "unit/platform/linux/terminals/AutomationFixture.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace quorvin::testing {

/// One window of the stand-in, as Konsole shows it on the bus.
class StandInKonsoleWindow final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.konsole.Window")
public:
    StandInKonsoleWindow(int number, QStringList sessions, QStringList& selected)
        : m_number(number), m_sessions(std::move(sessions)), m_selected(selected) {}

public Q_SLOTS:
    QStringList sessionList() const { return m_sessions; }
    void setCurrentSession(int session) {
        m_selected.append(QStringLiteral("window %1 session %2").arg(m_number).arg(session));
    }

private:
    int m_number;
    QStringList m_sessions;
    QStringList& m_selected;
};

/// One session of the stand-in.
class StandInKonsoleSession final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.konsole.Session")
public:
    explicit StandInKonsoleSession(ProcessID shell) : m_shell(shell) {}

public Q_SLOTS:
    int processId() const { return m_shell; }

private:
    ProcessID m_shell;
};

/// A Konsole without windows: what it shows on the bus.
class StandInKonsole {
public:
    explicit StandInKonsole(QDBusConnection connection) : m_connection(std::move(connection)) {}

    void own(const QString& name) { EXPECT_TRUE(m_connection.registerService(name)); }
    [[nodiscard]] QByteArray uniqueName() const { return m_connection.baseService().toUtf8(); }

    void addWindow(int number, const QList<int>& sessions) {
        QStringList names;
        for (const int session : sessions) {
            names.append(QString::number(session));
        }
        add(QStringLiteral("/Windows/%1").arg(number),
            std::make_unique<StandInKonsoleWindow>(number, names, m_selected));
    }
    void addSession(int number, ProcessID shell) {
        add(QStringLiteral("/Sessions/%1").arg(number),
            std::make_unique<StandInKonsoleSession>(shell));
    }

    /// Which sessions were made the current ones, as "window 1 session 2".
    [[nodiscard]] const QStringList& selected() const { return m_selected; }

private:
    void add(const QString& path, std::unique_ptr<QObject> object) {
        EXPECT_TRUE(
            m_connection.registerObject(path, object.get(), QDBusConnection::ExportAllSlots));
        m_objects.push_back(std::move(object));
    }

    QDBusConnection m_connection;
    std::vector<std::unique_ptr<QObject>> m_objects;
    QStringList m_selected;
};

} // namespace quorvin::testing
