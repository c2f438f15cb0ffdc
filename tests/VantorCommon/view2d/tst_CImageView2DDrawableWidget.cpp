// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include "tests/support/ViewReference.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CPolygon.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/view2d/CImageView2DDrawableWidget.h>

#include <QApplication>
#include <random>

using namespace Vantor::Geometry;
using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
using GeometryPtr = std::shared_ptr<CGeometry>;

namespace
{
/// A white surface that lets its protected parts be called.
class CSurface : public CImageView2DDrawableWidget
{
public:
    explicit CSurface(CImageView2DToolModel* pTools = nullptr, QWidget* pParent = nullptr)
        : CImageView2DDrawableWidget(pTools, pParent)
    {
        resize(200, 150);
        SetViewPort(QRect(0, 0, 200, 150));
        SetWindow(QRect(0, 0, 200, 150));
    }
    void Paint(QPainter& painter) override { painter.fillRect(rect(), Qt::white); }

    using CImageView2DDrawableWidget::InternalDrawCompositeGeometry;
    using CImageView2DDrawableWidget::InternalDrawElementGeometry;
    using CImageView2DDrawableWidget::InternalDrawObject;
    using CImageView2DDrawableWidget::InternalDrawText;
    using CImageView2DDrawableWidget::ViewPort;
    using CImageView2DDrawableWidget::Window;
};

/// A rectangle that claims to be an ellipse.
class CLiar : public CRectangle
{
public:
    using CRectangle::CRectangle;
    EGeometryType GetType() const override { return EGeometryType_Ellipse; }
};

template <class T = CImageView2DDrawableGeometry>
std::shared_ptr<T> MakeObject(GeometryPtr pGeometry, bool bDisplayName = false)
{
    auto pObject = std::make_shared<T>();
    pObject->SetData(std::move(pGeometry));
    pObject->SetDisplayName(bDisplayName);
    return pObject;
}

ObjectPtr MakeRectangle(double x, double y, double w, double h)
{
    return MakeObject(std::make_shared<CRectangle>(x, y, w, h));
}

GeometryPtr MakePolygon(const std::vector<CPoint<double>>& points)
{
    auto pPolygon = std::make_shared<CPolygon>();
    CPointList list;
    for (const auto& point : points)
        list.Add(point);
    pPolygon->SetPoints(list);
    return pPolygon;
}

QColor At(const QImage& picture, int x, int y)
{
    return picture.pixelColor(x, y);
}

int Count(const QImage& picture, const QColor& color)
{
    int nCount = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            nCount += picture.pixelColor(x, y) == color;
    return nCount;
}

const QColor kRed(255, 0, 0);
const QColor kGreen(0, 255, 0);
const QColor kGrey(100, 100, 100);
const QColor kLabel(10, 10, 10);
} // namespace

class tst_CImageView2DDrawableWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aShapeWithoutItsPointsIsNotDrawnAtAll()
    {
        class CPointless : public CRectangle
        {
        public:
            using CRectangle::CRectangle;
            int GetPoints(CPointList&, CPointList&) const override { return 1; }
        };
        CSurface surface;
        surface.DrawObject(MakeObject(std::make_shared<CPointless>(20, 20, 60, 50)));
        const QImage picture = ViewReference::Grab(surface);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                QCOMPARE(At(picture, x, y), QColor(Qt::white));
        surface.Clear();
        surface.DrawObject(MakeRectangle(20, 20, 60, 50));
        QVERIFY(ViewReference::Grab(surface) != picture);
    }

    void bothRectanglesBeginWithTheSizeOfTheWidgetAndTheMouseIsTracked()
    {
        QWidget parent;
        struct SProbe : CImageView2DDrawableWidget {
            using CImageView2DDrawableWidget::CImageView2DDrawableWidget;
            using CImageView2DDrawableWidget::ViewPort;
            using CImageView2DDrawableWidget::Window;
        } probe(nullptr, &parent);
        QCOMPARE(probe.ViewPort(), QRect(0, 0, probe.width(), probe.height()));
        QCOMPARE(probe.Window(), QRect(0, 0, probe.width(), probe.height()));
        QVERIFY(probe.hasMouseTracking());
        QCOMPARE(probe.parentWidget(), &parent);
        QVERIFY(!probe.isWindow());
    }

    void aNullObjectIsIgnoredAndTheListKeepsTheOrder()
    {
        CSurface surface;
        const ObjectPtr pA = MakeRectangle(0, 0, 1, 1);
        const ObjectPtr pB = MakeRectangle(0, 0, 1, 1);
        surface.DrawObject(pA);
        surface.DrawObject(nullptr);
        surface.DrawObject(pB);
        QCOMPARE(surface.GetDrawableObjects(), (std::vector<ObjectPtr>{pA, pB}));
        surface.GetDrawableObjects().clear(); // a copy
        QCOMPARE(surface.GetDrawableObjects().size(), std::size_t(2));
        surface.Clear();
        QVERIFY(surface.GetDrawableObjects().empty());
    }

    void handingTheSameObjectTwiceToDrawObjectPaintsItTwice()
    {
        CSurface surface;
        const ObjectPtr pObject = MakeRectangle(40, 40, 100, 60);
        surface.DrawObject(pObject);
        const QColor once = At(ViewReference::Grab(surface), 90, 70);
        surface.DrawObject(pObject);
        QCOMPARE(surface.GetDrawableObjects().size(), std::size_t(2));
        const QColor twice = At(ViewReference::Grab(surface), 90, 70);
        QCOMPARE(once, QColor(205, 255, 205));
        QVERIFY(twice.red() < once.red());
    }

    void theMappingsFollowThePlainModel()
    {
        CSurface surface;
        std::mt19937 random(1);
        std::uniform_int_distribution<int> place(-500, 500);
        std::uniform_int_distribution<int> size(1, 900);
        for (int i = 0; i < 1000; ++i) {
            const QRect v(place(random), place(random), size(random), size(random));
            const QRect w(place(random), place(random), size(random), size(random));
            surface.SetViewPort(v);
            surface.SetWindow(w);
            const QPointF p(place(random) + 0.25, place(random) - 0.5);
            const QRectF r(p, QSizeF(size(random), size(random)));
            const double kx = double(w.width()) / v.width();
            const double ky = double(w.height()) / v.height();
            QCOMPARE(surface.MapToImage(p), QPointF((p.x() - v.left()) * kx, (p.y() - v.top()) * ky));
            QCOMPARE(surface.MapToWidget(p), QPointF(p.x() / kx + v.left(), p.y() / ky + v.top()));
            QCOMPARE(surface.MapToImage(r),
                     QRectF(surface.MapToImage(p), QSizeF(r.width() * kx, r.height() * ky)));
            QCOMPARE(surface.MapToWidget(r),
                     QRectF(surface.MapToWidget(p), QSizeF(r.width() / kx, r.height() / ky)));
        }
    }

    void anEmptyViewportOrWindowMapsToZeroAndPaintsNothing()
    {
        for (int i = 0; i < 2; ++i) {
            CSurface surface;
            surface.DrawObject(MakeRectangle(40, 40, 100, 60));
            (i == 0) ? surface.SetViewPort(QRect(0, 0, 0, 150)) : surface.SetWindow(QRect(0, 0, 200, 0));
            QCOMPARE(surface.MapToImage(QPointF(3, 4)), QPointF(0, 0));
            QCOMPARE(surface.MapToWidget(QPointF(3, 4)), QPointF(0, 0));
            QCOMPARE(surface.MapToImage(QRectF(1, 2, 3, 4)), QRectF(0, 0, 0, 0));
            QCOMPARE(surface.MapToWidget(QRectF(1, 2, 3, 4)), QRectF(0, 0, 0, 0));
            const QImage picture = ViewReference::Grab(surface);
            QCOMPARE(Count(picture, Qt::white), picture.width() * picture.height());
        }
    }

    void aWindowThatDoesNotStartAtZeroIsMappedAsIfItDidWhileThePainterAccountsForItsOrigin()
    {
        CSurface surface;
        surface.SetWindow(QRect(30, 20, 200, 150));
        QCOMPARE(surface.MapToImage(QPointF(50, 60)), QPointF(50, 60));
        QCOMPARE(surface.MapToWidget(QPointF(50, 60)), QPointF(50, 60));
        surface.DrawObject(MakeRectangle(80, 70, 60, 40));
        const QImage picture = ViewReference::Grab(surface);
        QCOMPARE(At(picture, 60, 60), QColor(205, 255, 205)); // drawn from (50, 50)
        QCOMPARE(At(picture, 125, 105), QColor(Qt::white));   // where the mapping puts it
        ViewReference reference(surface.size(), surface.ViewPort(), surface.Window());
        QImage expected(surface.size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        reference.PaintObjects(expected, surface.GetDrawableObjects());
        QCOMPARE(picture, expected);
    }

    void theCursorFollowsTheMode_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("cursor");
        QTest::newRow("panning") << 1 << int(Qt::SizeAllCursor);
        for (int i = 2; i <= 6; ++i)
            QTest::addRow("drawing %d", i) << i << int(Qt::CrossCursor);
    }

    void theCursorFollowsTheMode()
    {
        QFETCH(int, mode);
        QFETCH(int, cursor);
        CImageView2DToolModel tools;
        CSurface surface(&tools);
        tools.SetViewMode(EImageView2DMode(mode));
        QCOMPARE(int(surface.cursor().shape()), cursor);
        tools.SetViewMode(EImageView2DMode(7));
        QCOMPARE(int(surface.cursor().shape()), cursor); // a larger value leaves it
        tools.SetViewMode(EImageView2DMode_Selecting);
        QCOMPARE(surface.cursor().shape(), Qt::ArrowCursor);
    }

    void withoutAToolModelTheCursorStays()
    {
        CSurface surface;
        surface.setCursor(Qt::WaitCursor);
        surface.slot_ChangeViewMode();
        QCOMPARE(surface.cursor().shape(), Qt::WaitCursor);
        auto pTools = std::make_unique<CImageView2DToolModel>();
        CSurface other(pTools.get());
        pTools.reset();
        other.slot_ChangeViewMode();
    }

    void aShapeIsGreenAndRedWhenSelected()
    {
        for (const bool bSelected : {false, true}) {
            CSurface surface;
            surface.SetViewPort(QRect(0, 0, 400, 300)); // two widget pixels to one
            const auto pObject = MakeObject(std::make_shared<CEllipse>(10, 10, 60, 40));
            pObject->SetSelected(bSelected);
            pObject->SetPen(QPen(Qt::blue)); // takes no part
            pObject->SetBrushFilled(QBrush(Qt::blue));
            surface.DrawObject(pObject);
            const QImage picture = ViewReference::Grab(surface);
            QCOMPARE(At(picture, 80, 60), bSelected ? QColor(255, 205, 205) : QColor(205, 255, 205));
            QVERIFY(Count(picture, bSelected ? kRed : kGreen) > 100);
            QCOMPARE(Count(picture, bSelected ? kGreen : kRed), 0);
            QCOMPARE(Count(picture, Qt::blue), 0);
        }
    }

    void everyShapeHasAGreyDashedBoxAndHandlesOfThreeScreenPixels()
    {
        CSurface surface;
        surface.SetViewPort(QRect(0, 0, 800, 600));
        surface.resize(800, 600);
        surface.DrawObject(MakeObject(std::make_shared<CEllipse>(50, 40, 80, 60)));
        const QImage picture = ViewReference::Grab(surface);
        int nGrey = 0;
        for (int x = 220; x < 500; ++x)
            nGrey += At(picture, x, 160) == kGrey;
        QVERIFY2(nGrey > 100 && nGrey < 270, qPrintable(QString::number(nGrey))); // dashes and gaps
        const QPoint corner(200, 160);
        QCOMPARE(At(picture, corner.x() - 3, corner.y() + 0), kGreen);
        QCOMPARE(At(picture, corner.x(), corner.y() - 3), kGreen);
        QCOMPARE(At(picture, corner.x() - 2, corner.y() - 1), QColor(205, 255, 205));
        QCOMPARE(At(picture, corner.x() - 6, corner.y()), QColor(Qt::white));
    }

    void linesAndArraysHaveNoBox()
    {
        CSurface surface;
        surface.DrawObject(
            MakeObject(std::make_shared<CLine>(CPoint<double>(20, 20), CPoint<double>(120, 100))));
        const auto pArray = std::make_shared<CGeometryArray>();
        pArray->Add(std::make_shared<CRectangle>(10, 10, 50, 50));
        surface.DrawObject(MakeObject(pArray));
        QCOMPARE(Count(ViewReference::Grab(surface), kGrey), 0);
        surface.Clear();
        surface.DrawObject(MakeObject(pArray));
        const QImage picture = ViewReference::Grab(surface);
        QCOMPARE(Count(picture, Qt::white), picture.width() * picture.height());
    }

    void aCircleShowsItsBoxAlone()
    {
        CSurface surface;
        surface.DrawObject(MakeObject(std::make_shared<CCircle>(CPoint<double>(80, 70), 40)));
        const QImage picture = ViewReference::Grab(surface);
        QVERIFY(Count(picture, kGrey) > 50);
        QCOMPARE(Count(picture, kGreen), 0);
        QCOMPARE(At(picture, 80, 70), QColor(Qt::white));
    }

    void aPolygonWithNoPointsDrawsAnEmptyPolygonAndNoHandles()
    {
        CSurface surface;
        surface.DrawObject(MakeObject(std::make_shared<CPolygon>()));
        QCOMPARE(Count(ViewReference::Grab(surface), kGreen), 0);
    }

    void aPolygonIsFilledOddEven()
    {
        CSurface surface; // a star: its centre is wound twice
        surface.DrawObject(MakeObject(MakePolygon({{100, 10}, {141, 137}, {33, 58}, {167, 58}, {59, 137}})));
        const QImage picture = ViewReference::Grab(surface);
        QCOMPARE(At(picture, 100, 80), QColor(Qt::white));
        QCOMPARE(At(picture, 100, 40), QColor(205, 255, 205));
    }

    void aGeometryShowsItsNameOnlyWithTheFlagOn()
    {
        CSurface surface;
        const auto pObject = MakeObject(std::make_shared<CRectangle>(20, 60, 100, 60));
        surface.DrawObject(pObject);
        QCOMPARE(Count(ViewReference::Grab(surface), kLabel), 0);
        pObject->SetDisplayName(true);
        pObject->SetName(QStringLiteral("M"));
        const QImage picture = ViewReference::Grab(surface);
        QVERIFY(Count(picture, kLabel) > 50);
        QVERIFY(Count(picture, Qt::white) > 50);
        // The box's corner is the baseline's beginning.
        QCOMPARE(At(picture, 20, 57), kLabel);
        QVERIFY(At(picture, 15, 45) != kLabel);
        QVERIFY(At(picture, 20, 90) != kLabel);
    }

    void aRulerAlwaysShowsItsLengthLabelEvenWithTheDisplayNameFlagOff()
    {
        const auto paint = [](bool bDisplayName, double dblLength) {
            CSurface surface;
            surface.DrawObject(MakeObject<CImageView2DDrawableRuler>(
                std::make_shared<CLine>(CPoint<double>(20, 100), CPoint<double>(20, 100 - dblLength)),
                bDisplayName));
            return ViewReference::Grab(surface);
        };
        const QImage off = paint(false, 50);
        QVERIFY(Count(off, kLabel) > 500);
        QCOMPARE(paint(true, 50), off);
        QVERIFY(paint(true, 50.001) != off); // three decimals
        QCOMPARE(At(off, 22, 53), kLabel);   // begins at the line's end
        // Exactly the text "50.000 pixel" on its background.
        QImage expected = off;
        ViewReference reference(QSize(200, 150), QRect(0, 0, 200, 150), QRect(0, 0, 200, 150));
        expected.fill(Qt::white);
        reference.PaintObjects(expected, {MakeObject<CImageView2DDrawableRuler>(std::make_shared<CLine>(
                                             CPoint<double>(20, 100), CPoint<double>(20, 50)))});
        QCOMPARE(off, expected);
    }

    void aRulerOfAnotherShapeHasNoLengthAndNoFill()
    {
        CSurface surface;
        surface.DrawObject(
            MakeObject<CImageView2DDrawableRuler>(std::make_shared<CRectangle>(20, 20, 100, 80), true));
        const QImage picture = ViewReference::Grab(surface);
        QCOMPARE(Count(picture, kLabel), 0);
        QCOMPARE(At(picture, 70, 60), QColor(Qt::white));
    }

    void textObjectsAreNotPainted()
    {
        CSurface surface;
        const auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetName(QStringLiteral("text"));
        surface.DrawObject(pText);
        const QImage picture = ViewReference::Grab(surface);
        QCOMPARE(Count(picture, Qt::white), picture.width() * picture.height());
    }

    void aGeometryWhoseKindAndClassDisagreeIsSkipped()
    {
        CSurface surface;
        surface.DrawObject(MakeObject(std::make_shared<CLiar>(20, 20, 100, 80)));
        QCOMPARE(At(ViewReference::Grab(surface), 70, 60), QColor(Qt::white));
    }

    void nullsAreHarmless()
    {
        CSurface surface;
        QImage image(10, 10, QImage::Format_RGB32);
        QPainter painter(&image);
        CRectangle rectangle(1, 1, 2, 2);
        surface.InternalDrawObject(nullptr, MakeRectangle(0, 0, 1, 1));
        surface.InternalDrawObject(&painter, nullptr);
        surface.InternalDrawObject(&painter, std::make_shared<CImageView2DDrawableGeometry>());
        surface.InternalDrawElementGeometry(nullptr, &rectangle, 1);
        surface.InternalDrawElementGeometry(&painter, nullptr, 1);
        surface.InternalDrawCompositeGeometry(nullptr, &rectangle, 1);
        surface.InternalDrawCompositeGeometry(&painter, nullptr, 1);
        surface.InternalDrawText(nullptr, QStringLiteral("x"), QPointF(), QPen(), QBrush(), QFont());
    }

    void laterObjectsPaintOverEarlierOnes()
    {
        CSurface surface;
        const ObjectPtr pGreen = MakeRectangle(40, 40, 60, 60);
        const ObjectPtr pRed = MakeRectangle(40, 40, 60, 60);
        pRed->SetSelected(true);
        surface.DrawObject(pGreen);
        surface.DrawObject(pRed);
        QCOMPARE(At(ViewReference::Grab(surface), 40, 37), kRed); // a handle
        surface.Clear();
        surface.DrawObject(pRed);
        surface.DrawObject(pGreen);
        QCOMPARE(At(ViewReference::Grab(surface), 40, 37), kGreen);
    }

    // Whatever is skipped or cached on the way, the pixels are those of the plain painter.
    void randomAnnotationsEqualThePlainModel()
    {
        std::mt19937 random(7);
        const auto number = [&](double low, double high) {
            return std::uniform_real_distribution<double>(low, high)(random);
        };
        for (int nRound = 0; nRound < 150; ++nRound) {
            CSurface surface;
            const QRect window(0, 0, int(number(50, 400)), int(number(50, 300)));
            const double z = std::exp(number(-1.5, 3.0));
            surface.SetWindow(window);
            surface.SetViewPort(QRect(int(number(-window.width() * z, 150)),
                                      int(number(-window.height() * z, 100)), int(window.width() * z) + 1,
                                      int(window.height() * z) + 1));
            for (int i = 0; i < 12; ++i) {
                const double x = number(-50, 420), y = number(-50, 320);
                const double w = number(-80, 80), h = number(-80, 80);
                ObjectPtr pObject;
                switch (i % 7) {
                case 0:
                    pObject = MakeObject(std::make_shared<CRectangle>(x, y, w, h), true);
                    break;
                case 1:
                    pObject = MakeObject(std::make_shared<CEllipse>(x, y, w, h), true);
                    break;
                case 2:
                    pObject = MakeObject(std::make_shared<CCircle>(CPoint<double>(x, y), std::abs(w)), true);
                    break;
                case 3:
                    pObject =
                        MakeObject(MakePolygon({{x, y}, {x + w, y}, {x + w, y + h}, {x, y + h / 2}}), true);
                    break;
                case 4:
                    pObject = MakeObject(
                        std::make_shared<CLine>(CPoint<double>(x, y), CPoint<double>(x + w, y + h)), true);
                    break;
                case 5:
                    pObject = MakeObject<CImageView2DDrawableRuler>(
                        std::make_shared<CLine>(CPoint<double>(x, y), CPoint<double>(x + w, y + h)));
                    break;
                default:
                    pObject = MakeObject(std::make_shared<CPoint<double>>(x, y), i > 7);
                    break;
                }
                pObject->SetSelected(number(0, 1) < 0.3);
                surface.DrawObject(pObject);
            }
            QImage expected(surface.size(), QImage::Format_RGB32);
            expected.fill(Qt::white);
            ViewReference(surface.size(), surface.ViewPort(), surface.Window())
                .PaintObjects(expected, surface.GetDrawableObjects());
            QCOMPARE(ViewReference::Grab(surface), expected);
        }
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableWidget)
#include "tst_CImageView2DDrawableWidget.moc"
