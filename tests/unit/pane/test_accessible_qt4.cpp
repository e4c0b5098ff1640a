// What Qt 4.8 tells assistive technology of the painted buttons: children of the pane's interface
// that are numbers. Built only with that toolkit, whose interface Qt 5 no longer has.
#include "frame_fixture.h"
#include "room_tests.h"

#include "pane/accessible_buttons.h"
#include "pane/button_state.h"
#include "pane/dzquillonpane.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QScopedPointer>
#include <QtTest>

#include <memory>

using namespace quillon;

class TestAccessibleQt4 : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_host.reset(new HostFixture);
        m_pane.reset(new DzQuillonPane);
        m_pane->resize(512, 1024);
        installAccessibleButtons();
        m_tells.reset(QAccessible::queryAccessibleInterface(m_pane.data()));
        QVERIFY(m_tells.data() != 0);
        m_buttons = describeButtons(m_pane->size());
    }
    void cleanup()
    {
        m_tells.reset();
        m_pane.reset();
        m_host.reset();
    }

    void everyButtonIsAChild()
    {
        QVERIFY(m_buttons.size() > 10);
        QCOMPARE(m_tells->childCount(), int(m_buttons.size()));
        for (int i = 0; i < int(m_buttons.size()); ++i)
            QCOMPARE(m_tells->text(QAccessible::Name, i + 1), m_buttons[size_t(i)].name);
    }
    void aButtonIsWhereItIsPressed()
    {
        for (int i = 0; i < int(m_buttons.size()); ++i) {
            const QRect screen = m_tells->rect(i + 1);
            QCOMPARE(screen.topLeft(), m_pane->mapToGlobal(m_buttons[size_t(i)].rect.topLeft()));
            QCOMPARE(screen.size(), m_buttons[size_t(i)].rect.size());
            const int hit = m_tells->childAt(screen.center().x(), screen.center().y());
            QVERIFY(hit >= 1 && hit <= i + 1); // an earlier one may lie above
        }
    }
    void aPlaceOutsideHasNoChild()
    {
        const QRect pane = m_tells->rect(0);
        QCOMPARE(m_tells->childAt(pane.right() + 50, pane.bottom() + 50), -1);
    }
    void rolesAndStatesFollowTheTable()
    {
        for (int i = 0; i < int(m_buttons.size()); ++i) {
            const ButtonDescription& button = m_buttons[size_t(i)];
            const bool isLink = button.row->look == Look::Link;
            const QAccessible::Role role = isLink ? QAccessible::Link
                : isSwitch(*button.row)           ? QAccessible::CheckBox
                                                  : QAccessible::PushButton;
            QCOMPARE(int(m_tells->role(i + 1)), int(role));
            QCOMPARE(bool(m_tells->state(i + 1) & QAccessible::Checked), button.checked);
        }
    }
    void whatIsNoChildHasNothing()
    {
        const int beyond = int(m_buttons.size()) + 1;
        QCOMPARE(m_tells->text(QAccessible::Name, beyond), QString());
        QCOMPARE(int(m_tells->role(beyond)), int(QAccessible::NoRole));
    }
    void thePaneItselfHasAName()
    {
        QCOMPARE(int(m_tells->role(0)), int(QAccessible::Pane));
        QCOMPARE(m_tells->text(QAccessible::Name, 0), QString::fromLatin1("Quillon"));
    }

private:
    std::unique_ptr<HostFixture> m_host;
    QScopedPointer<DzQuillonPane> m_pane;
    QScopedPointer<QAccessibleInterface> m_tells;
    std::vector<ButtonDescription> m_buttons;
};

QUILLON_TEST(TestAccessibleQt4)
#include "test_accessible_qt4.moc"
