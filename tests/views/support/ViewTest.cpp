#include "views/support/ViewTest.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QTest>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace quorvin::testing {

namespace {

void collect(QQuickItem* item, const QString& objectName, QList<QQuickItem*>& found) {
    if (item->objectName() == objectName) {
        found.append(item);
    }
    const auto children = item->childItems();
    for (QQuickItem* child : children) {
        collect(child, objectName, found);
    }
}

} // namespace

ViewTest::ViewTest() : m_engine(std::make_unique<QQmlEngine>()) {
    m_engine->addImportPath(u"qrc:/qt/qml"_s);
    m_engine->setOutputWarningsToStandardError(false);
    QObject::connect(m_engine.get(), &QQmlEngine::warnings, [](const QList<QQmlError>& warnings) {
        for (const QQmlError& warning : warnings) {
            ADD_FAILURE() << warning.toString().toStdString();
        }
    });
}

ViewTest::~ViewTest() {
    close();
    m_engine.reset(); // its singletons look at the program
    endProgram();
}

void ViewTest::show(const QString& qml, const QVariantMap& properties) {
    close();
    QQmlComponent component(m_engine.get());
    component.setData("import QtQuick\nimport Quorvin\n" + qml.toUtf8(), QUrl(u"qrc:/test"_s));
    ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
    m_root.reset(component.createWithInitialProperties(properties));
    ASSERT_TRUE(m_root) << component.errorString().toStdString();
    m_window = qobject_cast<QQuickWindow*>(m_root.get());
    if (m_window == nullptr) {
        ASSERT_NE(root(), nullptr) << "neither an item nor a window";
        m_ownWindow = std::make_unique<QQuickWindow>();
        m_window = m_ownWindow.get();
        m_window->resize(std::max(1, qRound(root()->width())),
                         std::max(1, qRound(root()->height())));
        root()->setParentItem(m_window->contentItem());
    }
    m_window->show();
    m_window->requestActivate();
    ASSERT_TRUE(QTest::qWaitForWindowActive(m_window));
    leave();
}

QVariantMap ViewTest::appState() {
    return {{u"appState"_s, QVariant::fromValue(&app())}};
}

void ViewTest::close() {
    m_root.reset();
    m_ownWindow.reset();
    m_window = nullptr;
}

QQuickItem* ViewTest::item(const QString& objectName) {
    const auto found = items(objectName);
    if (found.isEmpty()) {
        ADD_FAILURE() << "no item named " << objectName.toStdString();
        return nullptr;
    }
    return found.first();
}

QList<QQuickItem*> ViewTest::items(const QString& objectName) {
    QList<QQuickItem*> found;
    collect(m_window->contentItem(), objectName, found);
    return found;
}

QList<QQuickItem*> ViewTest::itemsIn(QQuickItem* ancestor, const QString& objectName) {
    QList<QQuickItem*> found = items(objectName);
    found.removeIf([&](const QQuickItem* item) { return !ancestor->isAncestorOf(item); });
    return found;
}

QQuickItem* ViewTest::itemIn(QQuickItem* ancestor, const QString& objectName) {
    const auto found = ancestor == nullptr ? QList<QQuickItem*>() : itemsIn(ancestor, objectName);
    if (found.isEmpty()) {
        ADD_FAILURE() << "no " << objectName.toStdString() << " in there";
        return nullptr;
    }
    return found.first();
}

QColor ViewTest::borderColor(const QQuickItem* rectangle) {
    return rectangle->property("border").value<QObject*>()->property("color").value<QColor>();
}

QRectF ViewTest::frameOf(QQuickItem* item) {
    if (item == nullptr) {
        return {};
    }
    (void)grab(); // lays out what has changed
    return item->mapRectToScene(item->boundingRect());
}

void ViewTest::pressByAssistant(QQuickItem* item) {
    accessible(item)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

void ViewTest::advance(std::chrono::milliseconds duration) {
    constexpr std::chrono::milliseconds frame(16);
    QCoreApplication::processEvents(); // what has been asked for begins now
    while (duration.count() > 0) {
        const auto step = std::min(frame, duration);
        duration -= step;
        scheduler.advance(step);
        m_clock.advance(step);
        QCoreApplication::processEvents();
    }
}

void ViewTest::clickAt(QPoint position) {
    QTest::mouseClick(m_window, Qt::LeftButton, {}, position);
}

void ViewTest::hover(const QString& objectName) {
    hoverAt(middleOf(objectName));
}

void ViewTest::hoverAt(QPoint position) {
    QTest::mouseMove(m_window, position + QPoint(1, 0)); // one that doesn't move isn't told
    QTest::mouseMove(m_window, position);
}

void ViewTest::leave() {
    QTest::mouseMove(m_window, QPoint(-1, -1));
}

void ViewTest::drag(QPoint from, QPoint to) {
    constexpr int steps = 8;
    QTest::mousePress(m_window, Qt::LeftButton, {}, from);
    for (int step = 1; step <= steps; ++step) {
        QTest::mouseMove(m_window, from + (to - from) * step / steps);
    }
    QTest::mouseRelease(m_window, Qt::LeftButton, {}, to);
}

void ViewTest::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(m_window, key, modifiers);
}

void ViewTest::type(const QString& text) {
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, m_window, Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
}

QPoint ViewTest::middleOf(const QString& objectName) {
    return middleOf(item(objectName));
}

QPoint ViewTest::middleOf(QQuickItem* item) {
    if (item == nullptr) {
        return {};
    }
    (void)grab(); // lays out what has changed
    return item->mapToScene(item->boundingRect().center()).toPoint();
}

QColor withAlpha(QColor color, double alpha) {
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

void expectColor(const QColor& actual, const QColor& expected) {
    constexpr double tolerance = 0.003;
    EXPECT_NEAR(actual.redF(), expected.redF(), tolerance);
    EXPECT_NEAR(actual.greenF(), expected.greenF(), tolerance);
    EXPECT_NEAR(actual.blueF(), expected.blueF(), tolerance);
    EXPECT_NEAR(actual.alphaF(), expected.alphaF(), tolerance);
}

} // namespace quorvin::testing
