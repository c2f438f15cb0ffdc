// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// Zoom and place in the host: the field in the status bar, the entries and their keys.
#include "CZoomField.h"
#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QRubberBand>
#include <QStatusBar>
#include <cmath>

namespace
{
const auto kDisabled = {"Zoom In",        "Zoom Out",     "Actual Size",   "Fit Width",
                        "To a Rectangle", "To the Shape", "Type a Zoom..."};

class CZoomHost : public Host
{
public:
    CZoomField* Field() const { return window.findChild<CZoomField*>(); }
    QAction* ZoomEntry(const char* pText) const
    {
        return Entry({QStringLiteral("View"), QStringLiteral("Zoom"), QString::fromLatin1(pText)});
    }
    double Zoom(int nView = 0) const { return View(nView)->GetZoom(); }
    bool IsZoom(double dblZoom, int nView = 0) const { return std::abs(Zoom(nView) / dblZoom - 1.0) < 1e-6; }
    QPointF Middle() const { return View(0)->MapToImage(QRectF(View(0)->rect()).center()); }
    void ClickField()
    {
        QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                          Field()->mapTo(&window, Field()->rect().center()));
    }
    void Type(const char* pText) { QTest::keyClicks(Field(), QString::fromLatin1(pText)); }
};
} // namespace

class tst_HostZoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Host::ForgetSettings();
        Host::StoreSetting(HostSettings::kMiniMap, QString());
    }

    void percentsAreWrittenAsPeopleReadThem()
    {
        QCOMPARE(CZoomField::TextOf(1.0), QStringLiteral("100 %"));
        QCOMPARE(CZoomField::TextOf(1.3849), QStringLiteral("138 %"));
        QCOMPARE(CZoomField::TextOf(0.0421), QStringLiteral("4.2 %"));
        QCOMPARE(CZoomField::TextOf(0.1), QStringLiteral("10 %"));
    }

    void percentsAreReadInAnyOfTheirForms()
    {
        QCOMPARE(CZoomField::ZoomOf(QStringLiteral("138 %")), 1.38);
        QCOMPARE(CZoomField::ZoomOf(QStringLiteral(" 138%")), 1.38);
        QCOMPARE(CZoomField::ZoomOf(QStringLiteral("12.5")), 0.125);
        for (const char* pBad : {"", "%", "abc", "-5", "0", "inf", "nan", "1e400"})
            QCOMPARE(CZoomField::ZoomOf(QString::fromLatin1(pBad)), 0.0);
        QLocale::setDefault(QLocale(QLocale::German));
        QCOMPARE(CZoomField::ZoomOf(QStringLiteral("12,5 %")), 0.125);
        QCOMPARE(CZoomField::ZoomOf(CZoomField::TextOf(0.055)), 0.055);
        QLocale::setDefault(QLocale::c());
    }

    void withoutAnImageThereIsNothingToZoom()
    {
        CZoomHost host;
        QVERIFY(host.Show());
        for (const char* pText : kDisabled)
            QVERIFY2(!host.ZoomEntry(pText)->isEnabled(), pText);
        QVERIFY(!host.Field()->isEnabled());
        QVERIFY(host.Field()->text().isEmpty());
    }

    void everyEntryHasKeysAndATipAndIsEnabledWithAnImage()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        for (const char* pText : kDisabled) {
            QVERIFY2(host.ZoomEntry(pText)->isEnabled(), pText);
            QVERIFY2(!host.ZoomEntry(pText)->shortcut().isEmpty(), pText);
            QVERIFY2(!host.ZoomEntry(pText)->statusTip().isEmpty(), pText);
        }
        host.Key(Qt::Key_F3);
        for (const char* pText : kDisabled)
            QVERIFY2(!host.ZoomEntry(pText)->isEnabled(), pText);
        QVERIFY(!host.Field()->isEnabled());
        host.Key(Qt::Key_F2);
        QVERIFY(host.Field()->isEnabled());
    }

    void theFieldShowsTheZoomOfTheActiveViewer()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        host.View(0)->setFocus();
        host.View(0)->SetZoom(1.38, QPointF());
        QCOMPARE(host.Field()->text(), QStringLiteral("138 %"));
        host.View(1)->SetZoom(2.5, QPointF());
        QCOMPARE(host.Field()->text(), QStringLiteral("138 %"));
        host.View(1)->setFocus();
        QCOMPARE(host.Field()->text(), QStringLiteral("250 %"));
        host.Entry("File", "Close Image")->trigger();
        QVERIFY(host.Field()->text().isEmpty() && !host.Field()->isEnabled());
    }

    void aTypedZoomIsSetAboutTheMiddle()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.View(0)->SetZoom(9.0, QPointF());
        const QPointF middle = host.Middle();
        host.ClickField();
        QTRY_COMPARE(host.Field()->selectedText(), host.Field()->text());
        host.Type("1200");
        QTest::keyClick(host.Field(), Qt::Key_Return);
        QVERIFY(host.IsZoom(12.0));
        QVERIFY((host.Middle() - middle).manhattanLength() < 1.0);
        QVERIFY(host.View(0)->hasFocus());
        QCOMPARE(host.Field()->text(), QStringLiteral("1200 %"));
    }

    void escapeLeavesTheFieldAsItWas()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.View(0)->SetZoom(9.0, QPointF());
        host.ClickField();
        QTRY_VERIFY(host.Field()->hasSelectedText());
        host.Type("7");
        QTest::keyClick(host.Field(), Qt::Key_Escape);
        QVERIFY(host.IsZoom(9.0));
        QVERIFY(host.View(0)->hasFocus());
        QCOMPARE(host.Field()->text(), QStringLiteral("900 %"));
    }

    void whatIsNoZoomIsToldAndStays()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        const double dblBefore = host.Zoom();
        host.ClickField();
        QTRY_VERIFY(host.Field()->hasSelectedText());
        host.Type("big");
        QTest::keyClick(host.Field(), Qt::Key_Return);
        QCOMPARE(host.Zoom(), dblBefore);
        QCOMPARE(host.Message(),
                 QStringLiteral("\"big\" is no zoom. Type a number of percent, such as 150."));
        QVERIFY(host.Field()->hasFocus());
    }

    void theKeysZoomAboutTheMiddleAndStopAtAHundredPercent()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Key(Qt::Key_1);
        QVERIFY(host.IsZoom(1.0));
        const QPointF middle = host.Middle();
        host.Key(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(host.IsZoom(1.25));
        QVERIFY((host.Middle() - middle).manhattanLength() < 2.0);
        host.Key(Qt::Key_Equal, Qt::ControlModifier);
        QVERIFY(host.IsZoom(1.5625));
        for (double dblZoom : {1.25, 1.0, 0.8}) {
            host.Key(Qt::Key_Minus, Qt::ControlModifier);
            QVERIFY(host.IsZoom(dblZoom));
        }
        host.View(0)->SetZoom(0.9, QPointF());
        host.Key(Qt::Key_Plus, Qt::ControlModifier);
        QVERIFY(host.IsZoom(1.0));
        host.Key(Qt::Key_0, Qt::ControlModifier);
        QVERIFY(host.View(0)->IsFitted());
        host.Key(Qt::Key_W);
        QCOMPARE(host.View(0)->GetViewPort().width(), host.View(0)->width());
    }

    void zoomingToTheShapeShowsAllThatIsSelected()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Key(Qt::Key_1);
        host.DrawRectangle(0); // 80 x 60 of its widget, a pixel each
        const QPointF middle = host.Middle();
        host.Key(Qt::Key_Z, Qt::ShiftModifier);
        QVERIFY(host.Zoom() > 2.0);
        QVERIFY((host.Middle() - middle).manhattanLength() < 2.0);
        const QRectF seen = host.View(0)->MapToImage(QRectF(host.View(0)->rect()));
        QVERIFY(seen.contains(QRectF(middle - QPointF(39, 29), QSizeF(78, 58))));
        host.View(0)->setFocus();
        host.Key(Qt::Key_Delete);
        QVERIFY(!host.ZoomEntry("To the Shape")->isEnabled());
    }

    void zoomingToARectangleTakesTheNextDrag()
    {
        CZoomHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Key(Qt::Key_1);
        const QPointF middle = host.Middle();
        host.Key(Qt::Key_Z);
        const QPoint centre = host.View(0)->rect().center();
        host.Drag(0, centre - QPoint(20, 15), centre + QPoint(20, 15));
        QVERIFY(host.Zoom() > 10.0);
        QVERIFY((host.Middle() - middle).manhattanLength() < 2.0);
        QCOMPARE(host.Annotations(0), 0);
    }

    void theMinimapIsKeptForTheNextTime()
    {
        {
            CZoomHost host;
            QVERIFY(host.Show({kPhoto}));
            QVERIFY(!host.ZoomEntry("Minimap")->isChecked());
            host.Key(Qt::Key_M);
            QVERIFY(host.ZoomEntry("Minimap")->isChecked());
        }
        CZoomHost host;
        QVERIFY(host.ZoomEntry("Minimap")->isChecked());
        host.ZoomEntry("Minimap")->trigger();
        QVERIFY(!host.ZoomEntry("Minimap")->isChecked());
    }

    void theHostKeepsThePlaceWhilePagesAreTurned()
    {
        CZoomHost host;
        QVERIFY(host.Show({kDocument}));
        host.View(0)->SetZoom(2.0, QPointF(50, 50));
        const QRect place = host.View(0)->GetViewPort();
        host.Key(Qt::Key_PageDown);
        QCOMPARE(host.View(0)->GetViewPort(), place);
        host.Key(Qt::Key_Down);
        QVERIFY(host.View(0)->GetViewPort().top() < place.top());
    }
};

VANTOR_TEST_MAIN(tst_HostZoom)
#include "tst_HostZoom.moc"
