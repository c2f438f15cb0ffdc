// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <QApplication>
#include <cmath>

using namespace Vantor::Geometry;

namespace
{
using Point = CPoint<double>;
using Shape = CImageView2DDrawableGeometry;
using GeometryPtr = std::shared_ptr<CGeometry>;

// A shape of a kind without a name of its own, whose points query can be made to fail.
class COddGeometry : public CRectangle
{
public:
    explicit COddGeometry(int nResult) : CRectangle(0, 0, 1, 1), m_nResult(nResult) {}
    EGeometryType GetType() const override { return static_cast<EGeometryType>(5); }
    int GetPoints(CPointList& outline, CPointList& handles) const override
    {
        CRectangle::GetPoints(outline, handles);
        return m_nResult;
    }

private:
    int m_nResult;
};

std::shared_ptr<CPolygon> MakeTriangle()
{
    CPointList points;
    points.Add(Point(0, 0));
    points.Add(Point(10, 0));
    points.Add(Point(5, 8));
    auto pPolygon = std::make_shared<CPolygon>();
    pPolygon->SetPoints(points);
    return pPolygon;
}
} // namespace

Q_DECLARE_METATYPE(std::shared_ptr<Vantor::Geometry::CGeometry>)

class tst_CImageView2DDrawableGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewObjectIsNamedAfterItsKindAndItsIdentifier_data()
    {
        QTest::addColumn<GeometryPtr>("geometry");
        QTest::addColumn<QString>("strPrefix");
        const auto row = [](const char* szPrefix, const GeometryPtr& pGeometry) {
            QTest::newRow(szPrefix) << pGeometry << QString::fromLatin1(szPrefix);
        };
        row("Point_", std::make_shared<Point>(1, 2));
        row("Line_", std::make_shared<CLine>());
        row("Rectangle_", std::make_shared<CRectangle>());
        row("Circle_", std::make_shared<CCircle>());
        row("Ellipse_", std::make_shared<CEllipse>());
        row("Object_", std::make_shared<COddGeometry>(0));
        row("Polygon_", std::make_shared<CPolygon>());
        row("GeometryArray_", std::make_shared<CGeometryArray>());
    }

    void aNewObjectIsNamedAfterItsKindAndItsIdentifier()
    {
        QFETCH(GeometryPtr, geometry);
        QFETCH(QString, strPrefix);
        Shape shape;
        shape.SetData(geometry);
        QCOMPARE(shape.GetName(), strPrefix + QString::number(shape.GetUID()));
    }

    void afterSetNameItKeepsThatNameForGood()
    {
        Shape shape;
        shape.SetData(std::make_shared<CRectangle>());
        shape.SetName(QStringLiteral("lamp"));
        QCOMPARE(shape.GetName(), QStringLiteral("lamp"));
        shape.SetData(std::make_shared<CEllipse>());
        QCOMPARE(shape.GetName(), QStringLiteral("lamp"));
    }

    void typeIsGeometryAndThereIsNoGeometryAtFirst()
    {
        const Shape shape;
        QCOMPARE(shape.GetType(), EImageView2DDrawbleObjectType_Geometry);
        QVERIFY(!shape.GetData());
    }

    void withoutAGeometryNothingHappens()
    {
        Shape shape;
        shape.SetName(QStringLiteral("given"));
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        QPointF handle(7, 7);
        QCOMPARE(shape.GetName(), QString());
        QCOMPARE(shape.GetBoundary(), QRectF(0, 0, 0, 0));
        shape.MoveTopLeftTo(QPointF(1, 1));
        QVERIFY(!shape.FindResizePoint(1e9, QPointF(0, 0), handle, 0.0));
        QCOMPARE(handle, QPointF(7, 7));
        shape.MoveResizePoint(QPointF(0, 0), QPointF(1, 1));
        QCOMPARE(spy.count(), 0);
    }

    void setDataSharesTheGeometryWithoutASignalAndChangeDataAnnouncesIt()
    {
        Shape shape;
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        const auto pRect = std::make_shared<CRectangle>(1, 2, 3, 4);
        shape.SetData(pRect);
        QCOMPARE(shape.GetData().get(), static_cast<CGeometry*>(pRect.get()));
        QCOMPARE(spy.count(), 0);
        shape.ChangeData(std::make_shared<CRectangle>(5, 6, 7, 8));
        QCOMPARE(shape.GetBoundary(), QRectF(5, 6, 7, 8));
        QCOMPARE(spy.count(), 1);
    }

    void theBoundaryIsNormalisedAndMovingTranslatesIt()
    {
        Shape shape;
        const auto pRect = std::make_shared<CRectangle>(10, 20, -4, -6);
        shape.SetData(pRect);
        QCOMPARE(shape.GetBoundary(), QRectF(6, 14, 4, 6));
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        shape.MoveTopLeftTo(QPointF(100, 200));
        QCOMPARE(shape.GetBoundary(), QRectF(100, 200, 4, 6));
        QCOMPARE(pRect->width(), -4.0);
        QCOMPARE(spy.count(), 1);
    }

    void aHandleExactlyAtTheToleranceIsFoundAndOneAHairFartherIsNot()
    {
        Shape shape;
        shape.SetData(std::make_shared<CLine>(Point(0, 0), Point(100, 0)));
        QPointF handle(7, 7);
        QVERIFY(shape.FindResizePoint(5.0, QPointF(3, 4), handle, 0.0));
        QCOMPARE(handle, QPointF(0, 0));
        handle = QPointF(7, 7);
        QVERIFY(!shape.FindResizePoint(5.0, QPointF(3, 4.000001), handle, 0.0));
        QCOMPARE(handle, QPointF(7, 7));
        QVERIFY(!shape.FindResizePoint(std::nan(""), QPointF(0, 0), handle, 0.0));
    }

    void aHandleIsFoundAtItsVeryPlaceThoughTheBoxIsRounded()
    {
        Shape shape;
        shape.SetData(std::make_shared<CRectangle>(0.3, 0.3, -71.3, -71.3));
        QVERIFY(shape.GetBoundary().right() < 0.3);
        QPointF handle;
        QVERIFY(shape.FindResizePoint(0.0, QPointF(0.3, 0.3), handle, 0.0));
        QCOMPARE(handle, QPointF(0.3, 0.3));
    }

    void theFirstHandleWithinTheToleranceWinsNotTheNearest()
    {
        Shape shape;
        shape.SetData(std::make_shared<CRectangle>(0, 0, 4, 4));
        QPointF handle;
        QVERIFY(shape.FindResizePoint(10.0, QPointF(4, 4), handle, 0.0));
        QCOMPARE(handle, QPointF(0, 0));
    }

    void theLastArgumentOfTheHandleSearchIsIgnored()
    {
        Shape shape;
        shape.SetData(std::make_shared<CRectangle>(0, 0, 40, 40));
        QPointF handle;
        QVERIFY(shape.FindResizePoint(1.0, QPointF(40, 40), handle, std::nan("")));
        QCOMPARE(handle, QPointF(40, 40));
    }

    void aPointsQueryThatFailsFindsNoHandle()
    {
        Shape shape;
        QPointF handle;
        shape.SetData(std::make_shared<COddGeometry>(0));
        QVERIFY(shape.FindResizePoint(1.0, QPointF(0, 0), handle, 0.0));
        shape.SetData(std::make_shared<COddGeometry>(1));
        QVERIFY(!shape.FindResizePoint(1.0, QPointF(0, 0), handle, 0.0));
    }

    void movingAHandleKeepsTheOppositeCorner_data()
    {
        QTest::addColumn<QPointF>("handle");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("top left") << QPointF(10, 20) << QRectF(1, 2, 39, 58);
        QTest::newRow("top right") << QPointF(40, 20) << QRectF(QPointF(10, 2), QPointF(1, 60));
        QTest::newRow("bottom right") << QPointF(40, 60) << QRectF(QPointF(10, 20), QPointF(1, 2));
        QTest::newRow("bottom left") << QPointF(10, 60) << QRectF(QPointF(1, 20), QPointF(40, 2));
    }

    void movingAHandleKeepsTheOppositeCorner()
    {
        QFETCH(QPointF, handle);
        QFETCH(QRectF, expected);
        const auto pRect = std::make_shared<CRectangle>(10, 20, 30, 40);
        const auto pEllipse = std::make_shared<CEllipse>(10, 20, 30, 40);
        const std::pair<GeometryPtr, const CBox*> arrCases[] = {{pRect, pRect.get()},
                                                                {pEllipse, pEllipse.get()}};
        for (const auto& [pGeometry, pBox] : arrCases) {
            Shape shape;
            shape.SetData(pGeometry);
            QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
            shape.MoveResizePoint(handle, QPointF(1, 2));
            QCOMPARE(QRectF(pBox->x(), pBox->y(), pBox->width(), pBox->height()), expected);
            QCOMPARE(spy.count(), 1);
        }
    }

    void draggingTheTopLeftHandleBeyondTheRightEdgeStillSetsTheTopLeft()
    {
        Shape shape;
        const auto pRect = std::make_shared<CRectangle>(0, 0, 10, 10);
        shape.SetData(pRect);
        shape.MoveResizePoint(QPointF(0, 0), QPointF(15, 2));
        QCOMPARE(pRect->x(), 15.0);
        QCOMPARE(pRect->width(), -5.0);
        QCOMPARE(pRect->y(), 2.0);
        QCOMPARE(pRect->height(), 8.0);
        QCOMPARE(shape.GetBoundary(), QRectF(10, 2, 5, 8));
    }

    void ofCoincidingHandlesTheFirstMoves()
    {
        Shape shape;
        const auto pRect = std::make_shared<CRectangle>(5, 5, 0, 0);
        shape.SetData(pRect);
        shape.MoveResizePoint(QPointF(5, 5), QPointF(2, 3));
        QCOMPARE(QRectF(pRect->x(), pRect->y(), pRect->width(), pRect->height()), QRectF(2, 3, 3, 2));
    }

    void theEndsOfALineMove()
    {
        Shape shape;
        const auto pLine = std::make_shared<CLine>(Point(0, 0), Point(9, 9));
        shape.SetData(pLine);
        shape.MoveResizePoint(QPointF(9, 9), QPointF(7, 1));
        QVERIFY(pLine->end() == Point(7, 1));
        shape.MoveResizePoint(QPointF(0, 0), QPointF(-1, -2));
        QVERIFY(pLine->start() == Point(-1, -2));
    }

    void theFirstVertexEqualToTheHandleMoves()
    {
        Shape shape;
        const auto pPolygon = MakeTriangle();
        shape.SetData(pPolygon);
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        shape.MoveResizePoint(QPointF(10, 0), QPointF(5, 8));
        QCOMPARE(pPolygon->GetVertices().size(), std::size_t(3));
        QVERIFY(pPolygon->GetVertices()[1] == Point(5, 8));
        shape.MoveResizePoint(QPointF(5, 8), QPointF(1, 1));
        QVERIFY(pPolygon->GetVertices()[1] == Point(1, 1));
        QVERIFY(pPolygon->GetVertices()[2] == Point(5, 8));
        QCOMPARE(spy.count(), 2);
    }

    void aPointThatIsNoHandleExactlyChangesNothing_data()
    {
        QTest::addColumn<GeometryPtr>("geometry");
        QTest::newRow("line") << GeometryPtr(std::make_shared<CLine>(Point(0, 0), Point(8, 8)));
        QTest::newRow("rectangle") << GeometryPtr(std::make_shared<CRectangle>(0, 0, 8, 8));
        QTest::newRow("ellipse") << GeometryPtr(std::make_shared<CEllipse>(0, 0, 8, 8));
        QTest::newRow("polygon") << GeometryPtr(MakeTriangle());
    }

    void aPointThatIsNoHandleExactlyChangesNothing()
    {
        QFETCH(GeometryPtr, geometry);
        Shape shape;
        shape.SetData(geometry);
        const QRectF before = shape.GetBoundary();
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        shape.MoveResizePoint(QPointF(1e-9, 0), QPointF(50, 50));
        QCOMPARE(spy.count(), 0);
        QCOMPARE(shape.GetBoundary(), before);
    }

    void deliberatelyACircleOffersNoHandleThatMovesAnything()
    {
        Shape shape;
        shape.SetData(std::make_shared<CCircle>(Point(5, 5), 5));
        CheckThatNothingReshapes(shape);
    }

    void aPointAndAnArrayOfferNoHandleThatMovesAnything()
    {
        Shape shape;
        shape.SetData(std::make_shared<Point>(5, 5));
        CheckThatNothingReshapes(shape);
        const auto pArray = std::make_shared<CGeometryArray>();
        pArray->Add(std::make_shared<CRectangle>(0, 0, 10, 10));
        shape.SetData(pArray);
        CheckThatNothingReshapes(shape);
    }

private:
    static void CheckThatNothingReshapes(Shape& shape)
    {
        const QRectF box = shape.GetBoundary();
        QSignalSpy spy(&shape, &Shape::signal_ChangeDrawableObjectProperty);
        for (const QPointF& point : {box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft(),
                                     box.center(), QPointF(box.right(), box.center().y())})
            shape.MoveResizePoint(point, QPointF(100, 100));
        QCOMPARE(shape.GetBoundary(), box);
        QCOMPARE(spy.count(), 0);
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableGeometry)
#include "tst_CImageView2DDrawableGeometry.moc"
