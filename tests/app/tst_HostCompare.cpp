// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Comparing viewers in the host: the entries of the menu, and the key that is held.
#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <cmath>

namespace
{
class CCompareHost : public Host
{
public:
    QAction* CompareEntry(const QStringList& lstPath) const
    {
        return Entry(QStringList{QStringLiteral("View"), QStringLiteral("Compare")} + lstPath);
    }
    QAction* Link() const { return CompareEntry({QStringLiteral("Link Viewers")}); }
    QAction* Other() const { return CompareEntry({QStringLiteral("Show Other Viewer")}); }
    QAction* Difference(int nView) const
    {
        return CompareEntry({QStringLiteral("Difference"), QStringLiteral("With Viewer %1").arg(nView)});
    }
    /// The view over that of a viewer; null when there is none.
    CImageView2D* Over(int nView) const { return View(nView)->findChild<CImageView2D*>(); }
    void Focus(int nView) { View(nView)->setFocus(); }
};
} // namespace

class tst_HostCompare : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void oneViewerHasNothingToCompareWith()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(!host.Other()->isEnabled());
        for (int i = 0; i < 4; ++i)
            QVERIFY(!host.Difference(i)->isEnabled());
        host.Key(Qt::Key_X);
        QVERIFY(!host.Over(0));
    }

    void linkedViewersFollowTheActiveOne()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.Focus(1);
        host.View(1)->SetZoom(9.0, QPointF());
        QVERIFY(!host.Link()->isChecked());
        host.Key(Qt::Key_L);
        QVERIFY(host.Link()->isChecked());
        QVERIFY(std::abs(host.View(0)->GetZoom() - 9.0) < 1e-6);
        host.Key(Qt::Key_1); // of the active one, and all follow
        QVERIFY(std::abs(host.View(0)->GetZoom() - 1.0) < 1e-6);
        host.Key(Qt::Key_L);
        host.Key(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(std::abs(host.View(0)->GetZoom() - 1.0) < 1e-6);
    }

    void theNextViewersImageIsShownWhileXIsHeld()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.Focus(0);
        QWindow* pWindow = host.window.windowHandle();
        QTest::keyPress(pWindow, Qt::Key_X);
        QVERIFY(host.Over(0));
        QVERIFY(host.Other()->isChecked());
        QCOMPARE(host.Over(0)->GetImageUID(), host.View(1)->GetImageUID());
        QTest::keyRelease(pWindow, Qt::Key_X);
        QVERIFY(!host.Over(0));
        QVERIFY(host.View(0)->hasFocus());
        host.Focus(1); // whose next one is the first
        QTest::keyPress(pWindow, Qt::Key_X);
        QCOMPARE(host.Over(1)->GetImageUID(), host.View(0)->GetImageUID());
        host.Focus(0); // another viewer is active
        QVERIFY(!host.Over(1));
        QTest::keyRelease(pWindow, Qt::Key_X);
        host.Key(Qt::Key_X, Qt::ControlModifier);
        QVERIFY(!host.Over(0));
    }

    void theEntryShowsTheOtherImageUntilItIsChosenAgain()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.Focus(0);
        host.Other()->trigger();
        QVERIFY(host.Over(0) && host.Other()->isChecked());
        host.Other()->trigger();
        QVERIFY(!host.Over(0) && !host.Other()->isChecked());
        host.Other()->trigger();
        QVERIFY(host.window.ChangeLayout(QStringLiteral("1x1")));
        QVERIFY(!host.Over(0));
    }

    void aDifferenceComesIntoTheActiveViewer()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.Focus(1);
        QVERIFY(host.Difference(0)->isEnabled());
        QVERIFY(!host.Difference(1)->isEnabled()); // itself
        QVERIFY(!host.Difference(2)->isEnabled()); // hidden
        const unsigned int nBefore = host.View(1)->GetImageUID();
        host.Difference(0)->trigger();
        QVERIFY(host.View(1)->GetImageUID() != nBefore);
        QVERIFY(host.Message().isEmpty());
    }

    void imagesThatCannotBeComparedAreToldInTheBar()
    {
        CCompareHost host;
        QVERIFY(host.Show({kPhoto, kDocument}));
        host.Focus(0);
        const unsigned int nBefore = host.View(0)->GetImageUID();
        host.Difference(1)->trigger();
        QVERIFY(host.Message().startsWith(
            QStringLiteral("Cannot compare the images. The images differ in size: 160 x 120 and ")));
        QCOMPARE(host.View(0)->GetImageUID(), nBefore);
    }
};

VANTOR_TEST_MAIN(tst_HostCompare)
#include "tst_HostCompare.moc"
