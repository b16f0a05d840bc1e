#pragma once

#include "views/components/DampedSpring.h"

#include <QAbstractAnimation>
#include <QObject>
#include <QQmlParserStatus>
#include <QtQml/qqmlregistration.h>

namespace quorvin {

/// A number that follows another one as if on a spring:
///
///     Spring { id: hover; to: button.hovered ? 1 : 0; response: 0.3; damping: 0.7 }
///     scale: 1 + 0.08 * hover.value
///
/// It starts at rest. A new aim, or another spring, takes it on from where it is with the speed
/// that it has. For amounts of about 1: it rests when less than a thousandth of that is left.
class Spring : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ELEMENT
    Q_INTERFACES(QQmlParserStatus)
    Q_PROPERTY(double to READ to WRITE setTo NOTIFY toChanged)
    /// Goes past `to` and back while it swings.
    Q_PROPERTY(double value READ value NOTIFY valueChanged)
    /// See DampedSpring.
    Q_PROPERTY(double response READ response WRITE setResponse NOTIFY responseChanged)
    Q_PROPERTY(double damping READ damping WRITE setDamping NOTIFY dampingChanged)

public:
    explicit Spring(QObject* parent = nullptr);

    [[nodiscard]] double to() const { return m_to; }
    void setTo(double to);
    [[nodiscard]] double value() const { return m_to + m_state.offset; }
    [[nodiscard]] double response() const { return m_spring.response; }
    void setResponse(double response);
    [[nodiscard]] double damping() const { return m_spring.damping; }
    void setDamping(double damping);

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void toChanged();
    void valueChanged();
    void responseChanged();
    void dampingChanged();

private:
    class Motion final : public QAbstractAnimation {
    public:
        explicit Motion(Spring& spring) : m_spring(spring) {}
        [[nodiscard]] int duration() const override { return -1; } // until it rests

    protected:
        void updateCurrentTime(int now) override { m_spring.moveTo(now); }

    private:
        Spring& m_spring;
    };

    void moveTo(int now);

    DampedSpring m_spring;
    DampedSpring::State m_state;
    double m_to = 0;
    int m_time = 0; ///< that m_state is for, in milliseconds of the motion
    bool m_isComplete = false;
    Motion m_motion{*this};
};

} // namespace quorvin
