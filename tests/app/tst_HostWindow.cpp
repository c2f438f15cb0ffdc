// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// The host's window as a person meets it: its size, what is active, what the readout and the tools go by.
#include "HostSupport.h"
#include "tests/VantorCommon/process/ToolParts.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QApplication>
#include <QDockWidget>
#include <QMessageBox>
#include <QScreen>
#include <QSignalSpy>

namespace
{
/// The readout of a viewer: "[X=3; Y=4] [V=1;2;3]".
QString Readout(const Host& host, int nView)
{
    for (const QLabel* pLabel : host.Viewer(nView)->findChildren<QLabel*>())
        if (pLabel->text().startsWith(QStringLiteral("[X=")))
            return pLabel->text();
    return QString();
}

/// The column that the readout tells; -1 when it is empty.
int ReadoutX(const Host& host, int nView)
{
    static const QRegularExpression column(QStringLiteral("^\\[X=(\\d+);"));
    const auto match = column.match(Readout(host, nView));
    return match.hasMatch() ? match.captured(1).toInt() : -1;
}

/// The labels of the property dock in one.
QString Properties(const Host& host)
{
    QStringList lstTexts;
    for (const QLabel* pLabel :
         host.window.findChild<QDockWidget*>(QStringLiteral("Properties"))->findChildren<QLabel*>())
        lstTexts << pLabel->text();
    return lstTexts.join(QLatin1Char('|'));
}

void MoveMouse(const Host& host, const QWidget* pWidget, const QPoint& at)
{
    QCursor::setPos(pWidget->mapToGlobal(at));
    QTest::mouseMove(host.window.windowHandle(), pWidget->mapTo(&host.window, at));
}
} // namespace

class tst_HostWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theFirstWindowTakesAtMostNineTenthsOfTheScreen()
    {
        Host host;
        QVERIFY(host.Show());
        const QSize room = host.window.screen()->availableGeometry().size();
        const QSize frame = host.window.frameGeometry().size();
        QVERIFY2(frame.width() <= room.width() * 0.9, qPrintable(QString::number(frame.width())));
        QVERIFY2(frame.height() <= room.height() * 0.9, qPrintable(QString::number(frame.height())));
        QVERIFY(host.window.minimumSizeHint().width() < 600 && host.window.minimumSizeHint().height() < 400);
    }

    void atFirstAnnotationsAndLogAreHiddenAndThereIsNoEmptyDock()
    {
        Host host;
        QVERIFY(host.Show());
        QStringList lstDocks;
        for (const QDockWidget* pDock : host.window.findChildren<QDockWidget*>())
            lstDocks << pDock->objectName() + (pDock->isHidden() ? QStringLiteral(" hidden") : QString());
        lstDocks.sort();
        QCOMPARE(lstDocks, QStringList({QStringLiteral("Annotations hidden"),
                                        QStringLiteral("Histogram hidden"), QStringLiteral("Log hidden"),
                                        QStringLiteral("Profile hidden"), QStringLiteral("Properties"),
                                        QStringLiteral("Results hidden"), QStringLiteral("Tools")}));
    }

    void inASmallWindowOfFourViewersThePicturesHaveHalfOfTheRoom()
    {
        Host host;
        QVERIFY(host.Show());
        QVERIFY(host.window.ChangeLayout(QStringLiteral("2x2")));
        host.window.resize(720, 516);
        QTRY_COMPARE(host.window.size(), QSize(720, 516));
        int nViewers = 0;
        int nPictures = 0;
        for (int i = 0; i < 4; ++i) {
            nViewers += host.Viewer(i)->width() * host.Viewer(i)->height();
            nPictures += host.View(i)->width() * host.View(i)->height();
        }
        QVERIFY2(nPictures * 2 >= nViewers, qPrintable(QString::number(100.0 * nPictures / nViewers)));
    }

    void aToolOfTheMenuWorksOnTheActiveViewerAndItsSelectedShape_data()
    {
        QTest::addColumn<QString>("strEntry");
        QTest::newRow("median") << QStringLiteral("Median Filter...");
        QTest::newRow("Sobel") << QStringLiteral("Sobel Filter...");
        QTest::newRow("OCR") << QStringLiteral("OCR...");
    }
    void aToolOfTheMenuWorksOnTheActiveViewerAndItsSelectedShape()
    {
        QFETCH(QString, strEntry);
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.View(1)->setFocus();
        host.DrawRectangle(1);
        const QString strShape = host.Viewer(1)->Get2DDrawableObjects().front()->GetName();
        const auto open = [&] {
            host.Entry({QStringLiteral("Tools"), strEntry})->trigger();
            return host.window.findChild<CImage2DProcessBaseDlg*>();
        };
        CImage2DProcessBaseDlg* pTool = open();
        QCOMPARE(pTool->GetSourceImage(), QStringLiteral("Image View [1]"));
        QCOMPARE(pTool->GetSourceROIName(), strShape);
        QVERIFY(Activate(host.window));
        host.View(0)->setFocus();
        open();
        QCOMPARE(pTool->GetSourceImage(), QStringLiteral("Image View [0]"));
        QCOMPARE(pTool->GetSourceROIIndex(), -1);
    }

    void aLayoutThatHidesTheActiveViewerMakesAShownOneActive()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto, kPhoto, TestDataPath(QStringLiteral("jpeg/hopper.jpg"))}));
        QTest::mouseClick(host.View(3), Qt::LeftButton);
        QTRY_VERIFY(host.View(3)->hasFocus());
        QVERIFY(Properties(host).contains(QStringLiteral("Width: 128")));
        host.Key(Qt::Key_1, Qt::ControlModifier);
        QCOMPARE(host.ShownViewers(), 1);
        QTRY_VERIFY(host.View(0)->hasFocus());
        QVERIFY(host.Viewer(0)->styleSheet().contains(QStringLiteral("rgb(0, 100, 200)")));
        QVERIFY2(Properties(host).contains(QStringLiteral("Width: 160")), qPrintable(Properties(host)));
    }

    void theReadoutIsOfTheImageThatIsShownAndOfThePointUnderTheMouse()
    {
        Host host;
        QVERIFY(host.Show());
        const QString strOther = TestDataPath(QStringLiteral("jpeg/hopper.jpg")); // 128 x 128
        host.window.OpenFiles({kPhoto, strOther}, QStringLiteral("1x1"));
        const QPoint centre = host.View(0)->rect().center();
        MoveMouse(host, host.View(0), centre);
        QTRY_VERIFY2(qAbs(ReadoutX(host, 0) - 80) <= 2, qPrintable(Readout(host, 0)));
        host.Key(Qt::Key_PageDown, Qt::ControlModifier);
        QTRY_VERIFY2(qAbs(ReadoutX(host, 0) - 64) <= 2, qPrintable(Readout(host, 0)));

        MoveMouse(host, host.window.findChild<QDockWidget*>(QStringLiteral("Tools")), QPoint(20, 200));
        QTRY_VERIFY(!host.View(0)->underMouse());
        host.Key(Qt::Key_PageUp, Qt::ControlModifier);
        QCOMPARE(Readout(host, 0), QString());
        QVERIFY(Properties(host).contains(QStringLiteral("X: |Y: |Pixel: ")));
    }

    void ctrlYIsRedoToo()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.View(0)->setFocus();
        host.DrawRectangle(0);
        host.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(host.Annotations(0), 0);
        host.Key(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(host.Annotations(0), 1);
    }

    void theGlobeAtRestPaintsNothingAndEscapeClosesIt()
    {
        Host host;
        QVERIFY(host.Show());
        host.Entry("Tools", "Globe")->trigger();
        auto* pGlobe = host.window.findChild<CImageView3DEarth*>();
        QTRY_VERIFY(QApplication::activeWindow() == pGlobe->window() && pGlobe->isValid());
        QTest::qWait(100); // as long as six steady repaints
        const QSignalSpy painted(pGlobe, &QOpenGLWidget::frameSwapped);
        QTest::qWait(100);
        QCOMPARE(painted.count(), 0);
        QTest::keyClick(pGlobe->window()->windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY(!pGlobe->isVisible());
    }

    void aboutNamesTheLicences()
    {
        Host host;
        QVERIFY(host.Show());
        host.Entry("Help", "About Vantor")->trigger();
        const auto* pBox = host.window.findChild<QMessageBox*>();
        for (const char* pWord : {"MIT", "Qt 5 (LGPL 3)", "poppler (GPL 2 or 3)", "under the GPL"})
            QVERIFY2(pBox->text().contains(QLatin1String(pWord)), pWord);
    }
};

VANTOR_TEST_MAIN(tst_HostWindow)
#include "tst_HostWindow.moc"
