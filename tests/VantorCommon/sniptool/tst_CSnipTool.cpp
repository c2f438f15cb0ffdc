// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/sniptool/CSnipTool.h>
#include <VantorCommon/sniptool/CSnipToolModel.h>

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QWindow>
#include <memory>

namespace
{
constexpr int kWidth = 300;
constexpr int kHeight = 200;
} // namespace

class tst_CSnipTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isAFramelessWindowOnTopThatStartsHidden();
    void aParentMakesNoChildOfIt();
    void theThreeAttributesAreSetAndTheBackgroundIsNotFilled();
    void aDragTellsStartAndEndInGlobalCoordinates();
    void aClickWithoutADragSelectsOnePixel();
    void deliberateADragFromBottomRightToTopLeftIsInverted();
    void positionsAreRoundedToTheNearestIntegerHalvesAwayFromZero();
    void onlyTheLeftButtonDrags();
    void movesAndReleasesWithoutAPressAreIgnored();
    void escapeAsksToLeave();
    void otherKeysAreIgnored();
    void hidingEndsADrag();
    void thePointerIsACrossWhileShownAndAnArrowAfterClosing();
    void deliberateTheMouseReachesTheWindowInSpiteOfTheAttribute();
    void theMaskIsTheWindowLessTheSelection();
    void everythingIsHalfTransparentGreyAndTheSelectionHasAGreenFrame();
    void withoutASelectionThereIsNoFrame();

private:
    void Send(QEvent::Type eType, const QPointF& pos, Qt::MouseButton eButton = Qt::LeftButton)
    {
        const Qt::MouseButtons held = eType == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(eType, pos, m_pTool->mapToGlobal(QPoint(0, 0)) + pos,
                          eType == QEvent::MouseMove ? Qt::NoButton : eButton, held, Qt::NoModifier);
        QApplication::sendEvent(m_pTool.get(), &event);
    }
    void Press(const QPointF& pos) { Send(QEvent::MouseButtonPress, pos); }
    void Move(const QPointF& pos) { Send(QEvent::MouseMove, pos); }
    void Release(const QPointF& pos) { Send(QEvent::MouseButtonRelease, pos); }
    QRect Selected() const { return m_pSpy->isEmpty() ? QRect() : m_pSpy->last().at(0).toRect(); }
    QRect Global(const QPoint& start, const QPoint& end) const
    {
        return {m_pTool->mapToGlobal(start), m_pTool->mapToGlobal(end)};
    }
    QImage Painted() const
    {
        QImage image(m_pTool->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        m_pTool->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    }

    CSnipToolModel m_model;
    std::unique_ptr<CSnipTool> m_pTool;
    std::unique_ptr<QSignalSpy> m_pSpy;
};

void tst_CSnipTool::init()
{
    m_pTool = std::make_unique<CSnipTool>(&m_model, nullptr);
    m_pTool->setGeometry(40, 30, kWidth, kHeight);
    m_pSpy = std::make_unique<QSignalSpy>(m_pTool.get(), &CSnipTool::signal_CaptureScreen);
}

void tst_CSnipTool::cleanup()
{
    m_pSpy.reset();
    m_pTool.reset();
}

void tst_CSnipTool::isAFramelessWindowOnTopThatStartsHidden()
{
    QVERIFY(m_pTool->isWindow());
    QVERIFY(m_pTool->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(m_pTool->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(m_pTool->isHidden());
    QVERIFY(m_pTool->testAttribute(Qt::WA_WState_ExplicitShowHide));
}

void tst_CSnipTool::aParentMakesNoChildOfIt()
{
    QWidget parent;
    const auto release = qScopeGuard([this] { cleanup(); }); // before its parent
    parent.setGeometry(200, 150, 400, 300);
    parent.show();
    QVERIFY(QTest::qWaitForWindowActive(&parent));
    m_pTool = std::make_unique<CSnipTool>(&m_model, &parent);
    m_pSpy = std::make_unique<QSignalSpy>(m_pTool.get(), &CSnipTool::signal_CaptureScreen);
    QVERIFY(m_pTool->isWindow());
    QVERIFY(m_pTool->windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(m_pTool->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(m_pTool->isHidden());
    // As the capture does it: the application goes, the tool lies over the whole screen.
    parent.showMinimized();
    QTRY_VERIFY(parent.isMinimized());
    m_pTool->setGeometry(m_pTool->screen()->geometry());
    m_pTool->showMaximized();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    QTRY_COMPARE(m_pTool->frameGeometry(), m_pTool->screen()->availableGeometry());
    QVERIFY(parent.isMinimized() && !m_pTool->isMinimized());
    Press({5, 6});
    Release({205, 106});
    QCOMPARE(Selected(),
             QRect(m_pTool->screen()->availableGeometry().topLeft() + QPoint(5, 6), QSize(201, 101)));
}

void tst_CSnipTool::theThreeAttributesAreSetAndTheBackgroundIsNotFilled()
{
    QVERIFY(m_pTool->testAttribute(Qt::WA_NoSystemBackground));
    QVERIFY(m_pTool->testAttribute(Qt::WA_TranslucentBackground));
    QVERIFY(m_pTool->testAttribute(Qt::WA_TransparentForMouseEvents));
    QVERIFY(!m_pTool->autoFillBackground());
}

void tst_CSnipTool::aDragTellsStartAndEndInGlobalCoordinates()
{
    Press({10, 20});
    Move({50, 60});
    Move({99, 79});
    QVERIFY(m_pSpy->isEmpty());
    Release({109, 89});
    QCOMPARE(m_pSpy->count(), 1);
    QCOMPARE(Selected(), Global({10, 20}, {109, 89}));
    QCOMPARE(Selected(), QRect(50, 50, 100, 70));
}

void tst_CSnipTool::aClickWithoutADragSelectsOnePixel()
{
    Press({10, 20});
    Release({10, 20});
    QCOMPARE(Selected(), QRect(50, 50, 1, 1));
}

void tst_CSnipTool::deliberateADragFromBottomRightToTopLeftIsInverted()
{
    Press({100, 80});
    Move({40, 30});
    Release({40, 30});
    QCOMPARE(Selected(), Global({100, 80}, {40, 30}));
    QCOMPARE(Selected().topLeft(), QPoint(140, 110));
    QCOMPARE(Selected().width(), -59);
    QCOMPARE(Selected().height(), -49);
}

void tst_CSnipTool::positionsAreRoundedToTheNearestIntegerHalvesAwayFromZero()
{
    Press({10.5, 20.4});
    Release({99.6, 79.5});
    QCOMPARE(Selected(), Global({11, 20}, {100, 80}));
    Press({-0.5, -1.4});
    Release({1.5, 2.5});
    QCOMPARE(Selected(), Global({-1, -1}, {2, 3}));
}

void tst_CSnipTool::onlyTheLeftButtonDrags()
{
    Send(QEvent::MouseButtonPress, {10, 10}, Qt::RightButton);
    Move({50, 50});
    Send(QEvent::MouseButtonRelease, {50, 50}, Qt::RightButton);
    QVERIFY(m_pSpy->isEmpty());
    Press({20, 20});
    Send(QEvent::MouseButtonPress, {30, 30}, Qt::RightButton);
    Send(QEvent::MouseButtonRelease, {40, 40}, Qt::RightButton);
    QVERIFY(m_pSpy->isEmpty());
    Release({60, 60});
    QCOMPARE(Selected(), Global({20, 20}, {60, 60}));
}

void tst_CSnipTool::movesAndReleasesWithoutAPressAreIgnored()
{
    m_pTool->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    Move({50, 50});
    Release({60, 60});
    QVERIFY(m_pSpy->isEmpty());
    QTRY_COMPARE(m_pTool->mask(), QRegion(m_pTool->rect()));
}

void tst_CSnipTool::escapeAsksToLeave()
{
    m_pTool->show();
    QSignalSpy exit(m_pTool.get(), &CSnipTool::signal_ExitCapture);
    QTest::keyClick(m_pTool.get(), Qt::Key_Escape);
    QCOMPARE(exit.count(), 1);
    QVERIFY(m_pTool->isVisible()); // who listens hides it
    QVERIFY(m_pSpy->isEmpty());
}

void tst_CSnipTool::otherKeysAreIgnored()
{
    m_pTool->show();
    QSignalSpy exit(m_pTool.get(), &CSnipTool::signal_ExitCapture);
    for (const int nKey : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_A, Qt::Key_F4}) {
        QKeyEvent event(QEvent::KeyPress, nKey, Qt::NoModifier);
        event.accept();
        QApplication::sendEvent(m_pTool.get(), &event);
        QVERIFY(!event.isAccepted());
    }
    QCOMPARE(exit.count(), 0);
    QVERIFY(m_pTool->isVisible());
}

void tst_CSnipTool::hidingEndsADrag()
{
    m_pTool->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    Press({10, 10});
    Move({50, 50});
    m_pTool->hide();
    Release({60, 60});
    QVERIFY(m_pSpy->isEmpty());
    // A window that comes and goes and comes at once may stay away, if the window manager is busy.
    QTRY_VERIFY(!m_pTool->windowHandle()->isExposed());
    m_pTool->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    QTRY_COMPARE(m_pTool->mask(), QRegion(m_pTool->rect())); // nothing of the old selection is left
}

void tst_CSnipTool::thePointerIsACrossWhileShownAndAnArrowAfterClosing()
{
    m_pTool->show();
    QCOMPARE(m_pTool->cursor().shape(), Qt::CrossCursor);
    m_pTool->close();
    QCOMPARE(m_pTool->cursor().shape(), Qt::ArrowCursor);
    m_pTool->show();
    QCOMPARE(m_pTool->cursor().shape(), Qt::CrossCursor);
}

void tst_CSnipTool::deliberateTheMouseReachesTheWindowInSpiteOfTheAttribute()
{
    m_pTool->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    QWindow* pWindow = m_pTool->windowHandle();
    QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));
    QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, QPoint(29, 39));
    QTRY_COMPARE(m_pSpy->count(), 1);
    QCOMPARE(Selected(), Global({10, 10}, {29, 39}));
}

void tst_CSnipTool::theMaskIsTheWindowLessTheSelection()
{
    m_pTool->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pTool.get()));
    QTRY_COMPARE(m_pTool->mask(), QRegion(m_pTool->rect()));
    Press({10, 20});
    Move({109, 89});
    const QRegion all(m_pTool->rect());
    QTRY_COMPARE(m_pTool->mask(), all - QRegion(10, 20, 100, 70));
    Move({59, 49}); // smaller again
    QTRY_COMPARE(m_pTool->mask(), all - QRegion(10, 20, 50, 30));
    Move({5, 5}); // an inverted selection cuts nothing out
    QTRY_COMPARE(m_pTool->mask(), all);
    Move({59, 49});
    QTRY_COMPARE(m_pTool->mask(), all - QRegion(10, 20, 50, 30));
    Release({59, 49});
    QTRY_COMPARE(m_pTool->mask(), all);
}

void tst_CSnipTool::everythingIsHalfTransparentGreyAndTheSelectionHasAGreenFrame()
{
    Press({10, 20});
    Move({109, 89});
    const QImage image = Painted();
    const QRect selection(10, 20, 100, 70);
    const QRect frame = selection.adjusted(-1, -1, 1, 1);
    const QRgb grey = qPremultiply(qRgba(127, 127, 127, 127));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (selection.contains(x, y))
                continue; // cut out
            const QRgb pixel = *(reinterpret_cast<const QRgb*>(image.constScanLine(y)) + x);
            const QRgb expected = frame.contains(x, y) ? qRgba(0, 255, 0, 255) : grey;
            if (pixel != expected)
                QFAIL(qPrintable(QStringLiteral("(%1, %2) is %3").arg(x).arg(y).arg(pixel, 8, 16)));
        }
    }
}

void tst_CSnipTool::withoutASelectionThereIsNoFrame()
{
    const auto hasGreen = [this] {
        const QImage image = Painted();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                if (image.pixel(x, y) == qRgba(0, 255, 0, 255))
                    return true;
        return false;
    };
    QVERIFY(!hasGreen());
    Press({50, 50});
    QVERIFY(!hasGreen());
    Move({50, 50});
    QVERIFY(hasGreen()); // one pixel is a selection
    Move({20, 20});
    QVERIFY(!hasGreen()); // an inverted one is empty
}

VANTOR_TEST_MAIN(tst_CSnipTool)
#include "tst_CSnipTool.moc"
