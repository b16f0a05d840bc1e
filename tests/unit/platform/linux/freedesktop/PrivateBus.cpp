#include "unit/platform/linux/freedesktop/PrivateBus.h"

#include "support/BoundProcess.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace quorvin::testing {

using namespace Qt::Literals::StringLiterals;

namespace {

void write(const QString& path, const QString& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0) {
        throw std::runtime_error(path.toStdString() + " can't be written");
    }
}

} // namespace

PrivateBus::PrivateBus() {
    QDir(m_directory.path()).mkdir(u"services"_s);
    write(
        filePath(u"bus.conf"_s),
        u"<busconfig><type>session</type><listen>unix:dir=%1</listen>"
        "<servicedir>%1/services</servicedir><policy context='default'>"
        "<allow send_destination='*'/><allow receive_sender='*'/><allow own='*'/></policy></busconfig>"_s
            .arg(m_directory.path()));
}

PrivateBus::~PrivateBus() {
    for (const QString& name : m_connections) {
        QDBusConnection::disconnectFromBus(name);
    }
    kill();
}

QDBusConnection PrivateBus::connect() {
    if (m_address.isEmpty()) {
        start();
    }
    const QString name = u"connection-%1"_s.arg(m_connections.size());
    m_connections.append(name);
    return QDBusConnection::connectToBus(m_address, name);
}

void PrivateBus::addActivatableService(const QString& service, const QString& shellCommand) {
    write(filePath(u"start.sh"_s), shellCommand);
    write(filePath(u"services/%1.service"_s.arg(service)),
          u"[D-BUS Service]\nName=%1\nExec=/bin/sh %2\n"_s.arg(service, filePath(u"start.sh"_s)));
}

void PrivateBus::kill() {
    m_process.kill();
    m_process.waitForFinished();
}

void PrivateBus::start() {
    m_process.setStandardErrorFile(QProcess::nullDevice());
    startBound(m_process, {u"dbus-daemon"_s, u"--config-file="_s + filePath(u"bus.conf"_s),
                           u"--nofork"_s, u"--print-address"_s});
    while (!m_process.canReadLine()) {
        if (!m_process.waitForReadyRead()) {
            throw std::runtime_error("The bus does not start");
        }
    }
    m_address = QString::fromUtf8(m_process.readLine()).trimmed();
}

} // namespace quorvin::testing
