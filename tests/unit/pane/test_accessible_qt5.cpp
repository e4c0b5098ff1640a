// What Qt 5 tells assistive technology of the painted buttons and texts, and what a press by it
// does. Built only with that toolkit, whose interface Qt 4.8 does not have. What is announced is
// e2e.at_spi's: only a session with assistive technology makes the toolkit listen.
#include "browse_fixture.h"
#include "button_numbers.h"
#include "room_tests.h"

#include "ground/status_message.h"
#include "pane/accessible_buttons.h"
#include "pane/button_state.h"
#include "pane/dzquillonpane.h"
#include "pane/hover.h"
#include "pane/page_painter.h"
#include "pane/page_state.h"

#include <QAccessible>
#include <QDialog>
#include <QtTest>

using namespace quillon;

static int g_told = 0; // events

static void count(QAccessibleEvent*)
{
    ++g_told;
}

class TestAccessibleQt5 : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<WindowedBrowseFixture> m_finder;
    std::unique_ptr<DzQuillonPane> m_pane;

    QAccessibleInterface* pane() const
    {
        return QAccessible::queryAccessibleInterface(m_pane.get());
    }
    QAccessibleInterface* button(int number) const
    {
        const std::vector<ButtonDescription> all = describeButtons(m_pane->size());
        for (size_t i = 0; i < all.size(); ++i)
            if (all[i].row->number == number)
                return pane()->child(int(i));
        return nullptr;
    }
    // The clicks that it takes now, as "Press, Right click".
    static QString clicksOf(QAccessibleInterface* button)
    {
        return button->actionInterface()->actionNames().join(", ");
    }
    static void press(QAccessibleInterface* button, const QString& action = "Press")
    {
        button->actionInterface()->doAction(action);
        QCoreApplication::sendPostedEvents();
    }
    void browseTwo()
    {
        m_finder->addFiles(2);
        pageState().picker = true;
        press(button(FirstCategoryButton + AllPoses));
        QCOMPARE(currentPage(), BrowsingPage);
        press(button(PreviousButton), "Middle click");
    }

private slots:
    void init();
    void cleanup();

    // the pane
    void everyButtonIsAChild();
    void whatIsNoChildHasNoPlace();
    void aChildIsFoundWhereItIs();
    void onlyThePaneHasButtons();

    // a button
    void aButtonSaysWhatItIs();
    void aButtonOfAnotherPageIsInvisible();
    void aButtonTakesTheClicksOfItsRow();
    void thePointersButtonIsTracked();
    void whatABusyPaneDoesNotTakeIsDisabled();
    void whatAPoseDoesNotTakeIsDisabled();

    // pressing
    void aPressDoesWhatTheMouseDoes();
    void anUnknownClickDoesNothing();
    void aModalWindowKeepsPressesOut();

    // texts
    void aTextIsAChildWhileItIsShown();
    void aTextHasItsPlace();

    // telling
    void nothingIsToldToNobody();
    void anInterfaceOutlivesItsPane();
};

void TestAccessibleQt5::init()
{
    m_finder.reset(new WindowedBrowseFixture);
    m_pane.reset(new DzQuillonPane);
    m_pane->resize(512, 1024);
    pageState() = PageState();
    leaveHover(m_pane->size());
    QAccessible::installUpdateHandler(count);
    g_told = 0;
}

void TestAccessibleQt5::cleanup()
{
    QAccessible::installUpdateHandler(nullptr);
    m_pane.reset();
    m_finder.reset();
}

void TestAccessibleQt5::everyButtonIsAChild()
{
    const std::vector<ButtonDescription> all = describeButtons(m_pane->size());
    QVERIFY(all.size() > 10);
    QCOMPARE(pane()->childCount(), int(all.size()));
    for (int i = 0; i < int(all.size()); ++i) {
        QAccessibleInterface* const child = pane()->child(i);
        QCOMPARE(child->text(QAccessible::Name), all[size_t(i)].name);
        QCOMPARE(child->text(QAccessible::Help), QString());
        QCOMPARE(pane()->indexOfChild(child), i);
        QCOMPARE(child->parent(), pane());
    }
}

void TestAccessibleQt5::whatIsNoChildHasNoPlace()
{
    QVERIFY(!pane()->child(-1));
    QVERIFY(!pane()->child(pane()->childCount()));
    QCOMPARE(pane()->indexOfChild(pane()), -1);
}

void TestAccessibleQt5::aChildIsFoundWhereItIs()
{
    for (int i = 0; i < pane()->childCount(); ++i) {
        const QPoint at = pane()->child(i)->rect().center();
        const int hit = pane()->indexOfChild(pane()->childAt(at.x(), at.y()));
        QVERIFY(hit >= 0 && hit <= i); // an earlier one may lie above
    }
    const QRect whole = pane()->rect();
    QVERIFY(!pane()->childAt(whole.right() + 50, whole.bottom() + 50));
}

void TestAccessibleQt5::onlyThePaneHasButtons()
{
    QWidget other;
    QVERIFY(!dynamic_cast<QAccessibleActionInterface*>(
        QAccessible::queryAccessibleInterface(&other)->child(0)));
    QAccessibleInterface* const child = pane()->child(0);
    QVERIFY(child->isValid());
    QVERIFY(!child->object());
    QVERIFY(!child->child(0));
    QVERIFY(!child->childAt(0, 0));
    QCOMPARE(child->childCount(), 0);
    QCOMPARE(child->indexOfChild(pane()), -1);
    const QString name = child->text(QAccessible::Name);
    child->setText(QAccessible::Name, "mine");
    QCOMPARE(child->text(QAccessible::Name), name);
}

void TestAccessibleQt5::aButtonSaysWhatItIs()
{
    QCOMPARE(button(LinkButton)->role(), QAccessible::Link);
    QCOMPARE(button(0)->role(), QAccessible::Button);
    QVERIFY(!button(0)->state().checkable);
    browseTwo();
    QAccessibleInterface* const lock = button(FirstLockButton);
    QCOMPARE(lock->role(), QAccessible::CheckBox);
    QVERIFY(lock->state().checkable && !lock->state().checked);
    press(lock);
    QVERIFY(lock->state().checked);
}

void TestAccessibleQt5::aButtonOfAnotherPageIsInvisible()
{
    QAccessibleInterface* const first = button(0);
    QVERIFY(!first->state().invisible);
    pageState().picker = true;
    QVERIFY(first->state().invisible);
    QCOMPARE(first->text(QAccessible::Name), QString());
    QVERIFY(first->rect().isEmpty());
    press(first); // which changes nothing
    QCOMPARE(currentPage(), PickerPage);
}

void TestAccessibleQt5::aButtonTakesTheClicksOfItsRow()
{
    QCOMPARE(clicksOf(button(2)), QString("Press, Right click, Middle click")); // the reset
    QCOMPARE(clicksOf(button(LinkButton)), QString("Press"));
    QAccessibleActionInterface* const clicks = button(2)->actionInterface();
    QCOMPARE(clicks->localizedActionDescription("Right click"),
        QString("Presses it with the right mouse button"));
    QCOMPARE(clicks->localizedActionDescription("Press"), QString("Presses the button"));
    QCOMPARE(clicks->localizedActionDescription("Jump"), QString());
    QCOMPARE(clicks->keyBindingsForAction("Press"), QStringList());
    QVERIFY(!button(2)->textInterface());
}

void TestAccessibleQt5::thePointersButtonIsTracked()
{
    const QPoint at = describeButtons(m_pane->size()).front().rect.center();
    QVERIFY(!pane()->child(0)->state().hotTracked);
    updateHover(m_pane->size(), at);
    QVERIFY(pane()->child(0)->state().hotTracked);
    QVERIFY(!pane()->child(1)->state().hotTracked);
}

void TestAccessibleQt5::whatABusyPaneDoesNotTakeIsDisabled()
{
    setBusy(true);
    QVERIFY(button(0)->state().disabled);
    setBusy(false);
    QVERIFY(!button(0)->state().disabled);
}

void TestAccessibleQt5::whatAPoseDoesNotTakeIsDisabled()
{
    browseTwo();
    QVERIFY(!button(RankButton)->state().disabled);
    QVERIFY(!button(FolderButton)->state().disabled);
    setBusy(true);
    QVERIFY(button(RankButton)->state().disabled);
    setBusy(false);
    pluginSettings().currentRank = CustomLibraryPose; // which has no rank
    QVERIFY(button(RankButton)->state().disabled);
    QVERIFY(!button(FolderButton)->state().disabled);
    pluginSettings().currentRank = Unranked;
    pluginSettings().currentPose = -1;
    QVERIFY(button(FolderButton)->state().disabled);
}

void TestAccessibleQt5::aPressDoesWhatTheMouseDoes()
{
    browseTwo();
    QCOMPARE(pageText(CounterText), QString("POSE 1 of 2"));
    press(button(NextButton), "Middle click");
    QCOMPARE(pageText(CounterText), QString("POSE 2 of 2"));
    press(button(BackButton));
    QCOMPARE(currentPage(), PickerPage);
}

void TestAccessibleQt5::anUnknownClickDoesNothing()
{
    browseTwo();
    press(button(BackButton), "Jump");
    QCOMPARE(currentPage(), BrowsingPage);
    press(button(LinkButton), "Right click"); // which the link does not know
    QCOMPARE(currentPage(), BrowsingPage);
}

void TestAccessibleQt5::aModalWindowKeepsPressesOut()
{
    browseTwo();
    {
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        QVERIFY(QApplication::activeModalWidget());
        press(button(BackButton));
        QCOMPARE(currentPage(), BrowsingPage);
    }
    press(button(BackButton));
    QCOMPARE(currentPage(), PickerPage);
}

void TestAccessibleQt5::aTextIsAChildWhileItIsShown()
{
    const int buttons = pane()->childCount();
    showStatusMessage("\r\nERROR\r\nno luck\r\n");
    QCOMPARE(pane()->childCount(), buttons + 1);
    QAccessibleInterface* const text = pane()->child(buttons);
    QCOMPARE(text->text(QAccessible::Name), QString("ERROR no luck"));
    QCOMPARE(text->text(QAccessible::Value), QString());
    QCOMPARE(text->role(), QAccessible::AlertMessage);
    QVERIFY(text->state().readOnly && !text->state().invisible);
    hideStatusMessage();
    QVERIFY(text->state().invisible);
    QCOMPARE(pane()->childCount(), buttons);
    browseTwo();
    QAccessibleInterface* const counter
        = pane()->child(int(describeButtons(m_pane->size()).size()));
    QCOMPARE(counter->text(QAccessible::Name), QString("POSE 1 of 2"));
    QCOMPARE(counter->role(), QAccessible::StaticText);
}

void TestAccessibleQt5::aTextHasItsPlace()
{
    showStatusMessage("a message");
    QAccessibleInterface* const text = pane()->child(pane()->childCount() - 1);
    const QRect local = pageTextRect(m_pane->size(), MessageText);
    QCOMPARE(text->rect(), QRect(m_pane->mapToGlobal(local.topLeft()), local.size()));
    QVERIFY(!local.isEmpty());
}

void TestAccessibleQt5::nothingIsToldToNobody()
{
    QVERIFY(!QAccessible::isActive());
    showStatusMessage("nobody listens");
    announceChanges(m_pane.get());
    QCOMPARE(g_told, 0);
}

// The toolkit's registry may ask while the pane goes.
void TestAccessibleQt5::anInterfaceOutlivesItsPane()
{
    const QAccessible::Id button = QAccessible::uniqueId(pane()->child(0));
    showStatusMessage("a message");
    const QAccessible::Id text = QAccessible::uniqueId(pane()->child(pane()->childCount() - 1));
    m_pane.reset();
    QVERIFY(!QAccessible::accessibleInterface(button));
    QVERIFY(!QAccessible::accessibleInterface(text));
}

QUILLON_TEST(TestAccessibleQt5)
#include "test_accessible_qt5.moc"
