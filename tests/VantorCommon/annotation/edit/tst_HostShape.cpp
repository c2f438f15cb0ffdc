// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// A shape that the library does not know: what a host writes for one, and that everything then works with it.
#include <Vantor/geometry/CPoint.h>
#include <Vantor/geometry/CPointList.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/process/CImage2DProcessBaseCtrl.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <tests/support/CenterFixture.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QComboBox>
#include <cmath>

using namespace Vantor::Geometry;

namespace
{
/// A square that stands on a corner, given by its centre and a corner on the right.
class CDiamond : public CGeometry
{
public:
    CDiamond(const CPoint<double>& centre, double radius) : m_centre(centre), m_radius(radius) {}

    double Radius() const { return m_radius; }
    const CPoint<double>& Centre() const { return m_centre; }

    EGeometryType GetType() const override { return static_cast<EGeometryType>(EGeometryType_Host + 5); }
    CRectangle GetBoundingRectangle() const override
    {
        return {m_centre.x() - m_radius, m_centre.y() - m_radius, 2 * m_radius, 2 * m_radius};
    }
    void MoveTopLeftTo(const CPoint<double>& point) override
    {
        m_centre = CPoint<double>(point.x() + m_radius, point.y() + m_radius);
    }
    int GetPoints(CPointList& outline, CPointList& handles) const override
    {
        outline.Clear();
        handles.Clear();
        outline.Add(CPoint<double>(m_centre.x(), m_centre.y() - m_radius));
        outline.Add(CPoint<double>(m_centre.x() + m_radius, m_centre.y()));
        outline.Add(CPoint<double>(m_centre.x(), m_centre.y() + m_radius));
        outline.Add(CPoint<double>(m_centre.x() - m_radius, m_centre.y()));
        handles.Add(outline.At(1));
        return 0;
    }
    bool MoveHandle(const CPoint<double>&, const CPoint<double>& to) override
    {
        m_radius = std::abs(to.x() - m_centre.x());
        return true;
    }
    bool Contains(const CPoint<double>& point) const override
    {
        return std::abs(point.x() - m_centre.x()) + std::abs(point.y() - m_centre.y()) <= m_radius;
    }
    std::shared_ptr<CGeometry> Clone() const override { return std::make_shared<CDiamond>(*this); }

private:
    CPoint<double> m_centre;
    double m_radius;
};

SShapeKind DiamondKind()
{
    SShapeKind kind;
    kind.strName = QStringLiteral("Diamond");
    kind.strPrefix = QStringLiteral("Diamond_");
    kind.strMenu = QStringLiteral("&Diamond");
    kind.strButton = QStringLiteral("Diamond");
    kind.strIcon = QStringLiteral(":/Image/2D.png");
    kind.strToolTip = QStringLiteral("Drag from the middle to a corner");
    kind.eCursor = Qt::PointingHandCursor;
    kind.nGeometry = EGeometryType_Host + 5;
    kind.fromDrag = [](const QPointF& start, const QPointF& end) {
        return ShapeKinds::Wrap(
            std::make_shared<CDiamond>(CPoint<double>(start.x(), start.y()), std::abs(end.x() - start.x())));
    };
    kind.write = [](const CImageView2DDrawableObject& object) {
        const auto* pDiamond = ShapeKinds::GeometryOf<CDiamond>(object);
        return SShapeData{{pDiamond->Centre().x(), pDiamond->Centre().y(), pDiamond->Radius()}, QString()};
    };
    kind.read = [](const SShapeData& data) -> SShapeKind::ObjectPtr {
        const std::vector<double>& n = data.vctNumbers;
        if (n.size() != 3)
            return nullptr;
        return ShapeKinds::Wrap(std::make_shared<CDiamond>(CPoint<double>(n[0], n[1]), n[2]));
    };
    return kind;
}

/// A path of clicks that is closed as polygons are; it becomes a diamond around its first edge's beginning.
SShapeKind ClickedKind()
{
    SShapeKind kind;
    kind.strName = QStringLiteral("Clicked");
    kind.strButton = QStringLiteral("Clicked");
    kind.nGeometry = EGeometryType_Host + 6;
    kind.fromClicks = [](const std::vector<QLineF>& vctEdges) {
        const QPointF first = vctEdges.front().p1();
        return ShapeKinds::Wrap(
            std::make_shared<CDiamond>(CPoint<double>(first.x(), first.y()), double(vctEdges.size())));
    };
    return kind;
}

const CDiamond* DiamondOf(const EditFixture::ObjectPtr& pObject)
{
    return pObject ? ShapeKinds::GeometryOf<CDiamond>(*pObject) : nullptr;
}

/// A processing tool that lists regions, and no more.
class CTool : public CImage2DProcessBaseCtrl
{
public:
    using CImage2DProcessBaseCtrl::CImage2DProcessBaseCtrl;
    bool Undo() override { return false; }
    bool Redo() override { return false; }
};
} // namespace

class tst_HostShape : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_nMode = ShapeKinds::Register(DiamondKind());
        QVERIFY(m_nMode > EImageView2DMode_Drawing_Line);
        QVERIFY(ShapeKinds::Register(ClickedKind()) > m_nMode);
    }

    void itIsDrawnByItsButtonUnderItsCursorNamedAndUndone()
    {
        EditFixture f;
        f.Choose("Diamond");
        QCOMPARE(int(f.tool.GetViewMode()), m_nMode);
        QCOMPARE(f.view->cursor().shape(), Qt::PointingHandCursor);
        f.Press({60, 50});
        f.Move({90, 50});
        QCOMPARE(f.geometry.GetObjectDrawing().size(), std::size_t(1)); // the preview
        f.Release({90, 50});
        QCOMPARE(f.geometry.Size(), 1);
        const auto pObject = f.geometry.GetAt(0);
        QVERIFY(DiamondOf(pObject));
        QCOMPARE(DiamondOf(pObject)->Radius(), 30.0);
        QCOMPARE(pObject->GetName(), QStringLiteral("Diamond_%1").arg(pObject->GetUID()));
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void itsButtonShowsItsPictureThoughTheSixHaveNone()
    {
        EditFixture f;
        QStringList lstTexts;
        for (const QPushButton* pButton : f.toolDock->findChildren<QPushButton*>())
            if (!pButton->icon().isNull())
                lstTexts << pButton->text();
        QCOMPARE(lstTexts, QStringList{QStringLiteral("Diamond")});
    }

    void itIsMovedResizedAndBroughtBackLikeAnyOther()
    {
        EditFixture f;
        f.Choose("Diamond");
        f.Drag({60, 50}, {90, 50});
        f.Drag({90, 50}, {80, 50}); // its handle
        QCOMPARE(DiamondOf(f.geometry.GetAt(0))->Radius(), 20.0);
        f.Drag({60, 45}, {70, 55});
        QCOMPARE(DiamondOf(f.geometry.GetAt(0))->Centre().x(), 70.0);
        f.PressUndo();
        QCOMPARE(DiamondOf(f.geometry.GetAt(0))->Centre().x(), 60.0);
        f.PressUndo();
        QCOMPARE(DiamondOf(f.geometry.GetAt(0))->Radius(), 30.0);
    }

    void itsOutlineIsPainted()
    {
        EditFixture f;
        const QImage before = f.view->grab().toImage();
        const auto pObject = f.Add(std::make_shared<CDiamond>(CPoint<double>(100, 75), 40));
        pObject->SetDisplayName(false);
        const QImage after = f.view->grab().toImage();
        // One edge at its middle, and beside it nothing of a rectangle.
        const QPoint edge = f.view->MapToWidget(QPointF(120, 55)).toPoint();
        const QPoint corner = f.view->MapToWidget(QPointF(130, 45)).toPoint();
        int nGreen = 0;
        for (int x = edge.x() - 2; x <= edge.x() + 2; ++x)
            nGreen += after.pixelColor(x, edge.y()) == QColor(0, 255, 0);
        QVERIFY(nGreen > 0);
        QCOMPARE(after.pixelColor(corner), before.pixelColor(corner));
    }

    void itsPixelsAreARegionOfTheTools()
    {
        CenterFixture f(1, 1);
        CImage2DProcessBaseDlg dlg(&f.window);
        CTool ctrl(&dlg);
        f.PressToolButton("Diamond");
        f.Drag(0, {60, 50}, {90, 50});
        const auto pObject = f.Viewer(0)->Get2DDrawableObjects().front();
        QCOMPARE(dlg.GetSourceROIName(), pObject->GetName());
        std::size_t nPixels = 0;
        for (const SPixelRun& run : ShapeKinds::GeometryOf<CGeometry>(*pObject)->GetPixelRuns(200, 150))
            nPixels += static_cast<std::size_t>(run.nEnd - run.nBegin);
        QVERIFY(nPixels > 1700 && nPixels < 1900); // 2 * 30 * 30
    }

    void itIsWrittenAndReadByItsName()
    {
        const SShapeKind& kind = *ShapeKinds::OfName(QStringLiteral("Diamond"));
        const auto pObject = ShapeKinds::Wrap(std::make_shared<CDiamond>(CPoint<double>(1.5, 2.5), 0.1));
        QCOMPARE(ShapeKinds::Of(*pObject), &kind);
        const auto pBack = kind.read(kind.write(*pObject));
        QCOMPARE(DiamondOf(pBack)->Radius(), 0.1);
        QCOMPARE(DiamondOf(pBack)->Centre().y(), 2.5);
    }

    void aKindOfClicksIsMadeOfItsEdges()
    {
        EditFixture f;
        f.Choose("Clicked");
        f.Press({20, 20});
        f.Release({20, 20}); // an edge, though a short one
        for (const QPointF& point : {QPointF(80, 20), QPointF(80, 90)}) {
            f.Move(point);
            QVERIFY(f.geometry.GetObjectDrawingWaiting());
            f.Click(point);
        }
        QCOMPARE(f.geometry.Size(), 0);
        f.Move({21, 20});
        f.Click({21, 20});
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(DiamondOf(f.geometry.GetAt(0))->Radius(), 4.0);
        QVERIFY(!f.geometry.GetObjectDrawingWaiting());
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
    }

    void aKindThatIsRegisteredLaterHasNoButtonInThePanelsThatAreThere()
    {
        EditFixture f;
        SShapeKind kind = DiamondKind();
        kind.strName = kind.strButton = QStringLiteral("Late");
        kind.nGeometry = EGeometryType_Host + 9;
        const int nMode = ShapeKinds::Register(kind);
        for (const QPushButton* pButton : f.toolDock->findChildren<QPushButton*>())
            QVERIFY(pButton->text() != QLatin1String("Late"));
        f.ctrl->slot_SelectShape(nMode); // but it can be drawn
        f.Drag({60, 50}, {90, 50});
        QCOMPARE(f.geometry.Size(), 1);
        EditFixture later;
        later.Choose("Late");
        QCOMPARE(int(later.tool.GetViewMode()), nMode);
    }

private:
    int m_nMode = 0;
};

VANTOR_TEST_MAIN(tst_HostShape)
#include "tst_HostShape.moc"
