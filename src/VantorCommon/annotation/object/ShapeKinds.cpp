// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <Vantor/geometry/CArrow.h>
#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CLine.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/CScaleBar.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableScaleBar.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeMoves_p.h>
#include <VantorCommon/log/CLogger.h>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Vantor::Geometry;

namespace
{
using Object = CImageView2DDrawableObject;
using ObjectPtr = SShapeKind::ObjectPtr;
using Numbers = std::vector<double>;
using Point = CPoint<double>;

/// Kinds that the tool model does not name are drawn in this mode and those behind it.
constexpr int kFirstFreeMode = 100;

// From a drag or from clicks to a shape.

Point CorePoint(const QPointF& point)
{
    return {point.x(), point.y()};
}

template <class Box> ObjectPtr DragBox(const QPointF& start, const QPointF& end)
{
    return ShapeKinds::Wrap(
        std::make_shared<Box>(start.x(), start.y(), end.x() - start.x(), end.y() - start.y()));
}

/// The press point is the centre. Deliberate: the shape is an ellipse with equal axes.
ObjectPtr DragCircle(const QPointF& start, const QPointF& end)
{
    const double r = std::hypot(end.x() - start.x(), end.y() - start.y());
    return ShapeKinds::Wrap(std::make_shared<CEllipse>(start.x() - r, start.y() - r, 2 * r, 2 * r));
}

/// As wide as high.
QPointF SquareCorner(const QPointF& start, const QPointF& current)
{
    const QPointF d = current - start;
    const double dblSide = std::max(std::abs(d.x()), std::abs(d.y()));
    return start + QPointF(std::copysign(dblSide, d.x()), std::copysign(dblSide, d.y()));
}

/// The nearest point in one of eight directions.
QPointF StepOf45Degrees(const QPointF& start, const QPointF& current)
{
    constexpr double kDirections[8][2] = {{1, 0},  {1, 1},   {0, 1},  {-1, 1},
                                          {-1, 0}, {-1, -1}, {0, -1}, {1, -1}};
    constexpr double kStep = 0.785398163397448309616; // pi / 4
    const QPointF d = current - start;
    const int nStep = static_cast<int>(std::lround(std::atan2(d.y(), d.x()) / kStep));
    const double* pDirection = kDirections[(nStep + 8) % 8];
    const QPointF direction(pDirection[0], pDirection[1]);
    return start +
           direction * (QPointF::dotProduct(d, direction) / QPointF::dotProduct(direction, direction));
}

ObjectPtr MakeRuler(std::shared_ptr<CLine> pLine)
{
    auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
    pRuler->SetData(std::move(pLine));
    return pRuler;
}

ObjectPtr DragRuler(const QPointF& start, const QPointF& end)
{
    return MakeRuler(std::make_shared<CLine>(CorePoint(start), CorePoint(end)));
}

ObjectPtr MakeScaleBar(std::shared_ptr<CScaleBar> pBar)
{
    auto pObject = std::make_shared<CImageView2DDrawableScaleBar>();
    pObject->SetData(std::move(pBar));
    return pObject;
}

ObjectPtr DragScaleBar(const QPointF& start, const QPointF& end)
{
    return MakeScaleBar(std::make_shared<CScaleBar>(CorePoint(start), CorePoint(end)));
}

ObjectPtr DragArrow(const QPointF& start, const QPointF& end)
{
    return ShapeKinds::Wrap(std::make_shared<CArrow>(CorePoint(start), CorePoint(end)));
}

/// Without letters yet; they are written in an editor when the mouse is released.
ObjectPtr StartText(const QPointF& start, const QPointF&)
{
    auto pText = std::make_shared<CImageView2DDrawableText>();
    pText->SetPosition(start);
    return pText;
}

ObjectPtr ClickPolygon(const std::vector<QLineF>& vctEdges)
{
    auto pPolygon = std::make_shared<CPolygon>();
    for (const QLineF& edge : vctEdges)
        pPolygon->AddEdge(CLine(CorePoint(edge.p1()), CorePoint(edge.p2())));
    return ShapeKinds::Wrap(std::move(pPolygon));
}

// To numbers and back. A null shape: these are not the numbers of such a one.

Numbers NumbersOfPoint(const Point& point)
{
    return {point.x(), point.y()};
}

std::shared_ptr<Point> PointOf(const Numbers& n)
{
    return n.size() == 2 ? std::make_shared<Point>(n[0], n[1]) : nullptr;
}

template <class Line> Numbers NumbersOfLine(const Line& line)
{
    return {line.start().x(), line.start().y(), line.end().x(), line.end().y()};
}

template <class Line> std::shared_ptr<Line> LineOf(const Numbers& n)
{
    return n.size() == 4 ? std::make_shared<Line>(Point(n[0], n[1]), Point(n[2], n[3])) : nullptr;
}

/// Corner and size, and the opposite corner where it is not exactly their sum.
template <class Box> Numbers NumbersOfBox(const Box& box)
{
    Numbers vctNumbers{box.x(), box.y(), box.width(), box.height()};
    const Point corner = box.bottomRight();
    if (corner.x() != box.x() + box.width() || corner.y() != box.y() + box.height())
        vctNumbers.insert(vctNumbers.end(), {corner.x(), corner.y()});
    return vctNumbers;
}

template <class Box> std::shared_ptr<Box> BoxOf(const Numbers& n)
{
    if (n.size() != 4 && n.size() != 6)
        return nullptr;
    auto pBox = std::make_shared<Box>(n[0], n[1], n[2], n[3]);
    if (n.size() == 6)
        pBox->SetRoundedCorner(Point(n[4], n[5]));
    return pBox;
}

Numbers NumbersOfCircle(const CCircle& circle)
{
    return {circle.center().x(), circle.center().y(), circle.radius()};
}

std::shared_ptr<CCircle> CircleOf(const Numbers& n)
{
    return n.size() == 3 ? std::make_shared<CCircle>(Point(n[0], n[1]), n[2]) : nullptr;
}

Numbers NumbersOfPolygon(const CPolygon& polygon)
{
    Numbers vctNumbers;
    for (const Point& vertex : polygon.GetVertices())
        vctNumbers.insert(vctNumbers.end(), {vertex.x(), vertex.y()});
    return vctNumbers;
}

std::shared_ptr<CPolygon> PolygonOf(const Numbers& n)
{
    if (n.empty() || n.size() % 2 != 0)
        return nullptr;
    CPointList points;
    for (std::size_t i = 0; i < n.size(); i += 2)
        points.Add(Point(n[i], n[i + 1]));
    auto pPolygon = std::make_shared<CPolygon>();
    pPolygon->SetPoints(points);
    return pPolygon;
}

/// The members one after another, each with its kind and the count of its numbers ahead. A nested array is
/// written as its members: the pixels are the same, and reading needs no recursion.
Numbers NumbersOfArray(const CGeometryArray& array)
{
    Numbers vctNumbers;
    for (int i = 0; i < array.Size(); ++i) {
        const std::shared_ptr<CGeometry> pMember = array.At(i);
        const ObjectPtr pObject = ShapeKinds::Wrap(pMember);
        const SShapeKind* pKind = ShapeKinds::Of(*pObject);
        if (!pKind || !pKind->write)
            continue;
        const Numbers vctMember = pKind->write(*pObject).vctNumbers;
        if (pMember->GetType() != EGeometryType_GeometryArray)
            vctNumbers.insert(vctNumbers.end(), {double(pMember->GetType()), double(vctMember.size())});
        vctNumbers.insert(vctNumbers.end(), vctMember.begin(), vctMember.end());
    }
    return vctNumbers;
}

std::shared_ptr<CGeometry> MemberOf(double dblGeometry, const Numbers& n)
{
    for (const SShapeKind& kind : ShapeKinds::All()) {
        if (kind.nGeometry != dblGeometry || !kind.read || kind.nGeometry == EGeometryType_GeometryArray)
            continue;
        const auto pShape = std::dynamic_pointer_cast<CImageView2DDrawableGeometry>(kind.read({n, {}}));
        return pShape ? pShape->GetData() : nullptr;
    }
    return nullptr;
}

std::shared_ptr<CGeometryArray> ArrayOf(const Numbers& n)
{
    auto pArray = std::make_shared<CGeometryArray>();
    std::size_t nAt = 0;
    while (nAt < n.size()) {
        const std::size_t nLeft = n.size() - nAt;
        if (nLeft < 2 || !(n[nAt + 1] >= 0.0) || n[nAt + 1] > double(nLeft - 2))
            return nullptr;
        const auto nCount = static_cast<std::size_t>(n[nAt + 1]);
        const auto itBegin = n.begin() + static_cast<std::ptrdiff_t>(nAt + 2);
        const Numbers vctMember(itBegin, itBegin + static_cast<std::ptrdiff_t>(nCount));
        const std::shared_ptr<CGeometry> pMember = MemberOf(n[nAt], vctMember);
        if (!pMember)
            return nullptr;
        pArray->Add(pMember);
        nAt += nCount + 2;
    }
    return pArray;
}

bool AllFinite(const Numbers& vctNumbers)
{
    return std::all_of(vctNumbers.begin(), vctNumbers.end(), [](double n) { return std::isfinite(n); });
}

// The rows.

/// What the kinds of shapes around a geometry of class T have alike.
template <class T>
SShapeKind KindOf(const QString& strName, EGeometryType eGeometry, Numbers (*numbersOf)(const T&),
                  std::shared_ptr<T> (*shapeOf)(const Numbers&))
{
    SShapeKind kind;
    kind.strName = strName;
    kind.strPrefix = strName + QLatin1Char('_');
    kind.nGeometry = eGeometry;
    kind.write = [numbersOf](const Object& object) {
        const T* pGeometry = ShapeKinds::GeometryOf<T>(object);
        return SShapeData{pGeometry ? numbersOf(*pGeometry) : Numbers(), QString()};
    };
    kind.read = [shapeOf](const SShapeData& data) -> ObjectPtr {
        const auto pGeometry = AllFinite(data.vctNumbers) ? shapeOf(data.vctNumbers) : nullptr;
        return pGeometry ? ShapeKinds::Wrap(pGeometry) : nullptr;
    };
    kind.move = &ShapeMoves::MovePairs;
    return kind;
}

SShapeKind Drawn(SShapeKind kind, int nMode, const char* szMenu, const char* szButton)
{
    kind.nMode = nMode;
    kind.strMenu = QLatin1String(szMenu);
    kind.strButton = QLatin1String(szButton);
    kind.strIcon = QStringLiteral(":/Image/%1.png").arg(kind.strName.toLower());
    return kind;
}

template <class Box>
SShapeKind BoxKind(const QString& strName, EGeometryType eGeometry, int nMode, const char* szMenu,
                   const char* szButton)
{
    SShapeKind kind =
        Drawn(KindOf<Box>(strName, eGeometry, &NumbersOfBox<Box>, &BoxOf<Box>), nMode, szMenu, szButton);
    kind.fromDrag = &DragBox<Box>;
    kind.move = &ShapeMoves::MoveBox;
    kind.constrain = &SquareCorner;
    return kind;
}

SShapeKind CircleKind()
{
    SShapeKind kind =
        Drawn(KindOf<CCircle>(QStringLiteral("Circle"), EGeometryType_Circle, &NumbersOfCircle, &CircleOf),
              EImageView2DMode_Drawing_Circle, "&Circle", "Circle");
    kind.fromDrag = &DragCircle;
    kind.move = &ShapeMoves::MoveFirst;
    return kind;
}

SShapeKind PolygonKind()
{
    SShapeKind kind = Drawn(
        KindOf<CPolygon>(QStringLiteral("Polygon"), EGeometryType_Polygon, &NumbersOfPolygon, &PolygonOf),
        EImageView2DMode_Drawing_Polygon, "&Polygon", "Polygon");
    kind.fromClicks = &ClickPolygon;
    kind.constrain = &StepOf45Degrees;
    return kind;
}

SShapeKind LineKind()
{
    return KindOf<CLine>(QStringLiteral("Line"), EGeometryType_Line, &NumbersOfLine<CLine>, &LineOf<CLine>);
}

/// Deliberate: it has no button, and its objects are named like lines.
SShapeKind RulerKind()
{
    SShapeKind kind = LineKind();
    kind.strName = QStringLiteral("Ruler");
    kind.nMode = EImageView2DMode_Drawing_Line;
    kind.eObject = EImageView2DDrawbleObjectType_Ruler;
    kind.bRegion = false;
    kind.fromDrag = &DragRuler;
    kind.constrain = &StepOf45Degrees;
    kind.read = [](const SShapeData& data) -> ObjectPtr {
        const auto pLine = AllFinite(data.vctNumbers) ? LineOf<CLine>(data.vctNumbers) : nullptr;
        return pLine ? MakeRuler(pLine) : nullptr;
    };
    return kind;
}

SShapeKind ArrowKind()
{
    SShapeKind kind = Drawn(
        KindOf<CArrow>(QStringLiteral("Arrow"), EGeometryType_Arrow, &NumbersOfLine<CArrow>, &LineOf<CArrow>),
        kFirstFreeMode, "&Arrow", "Arrow");
    kind.strToolTip = QStringLiteral("Drag from the tail to the tip");
    kind.bRegion = false;
    kind.bOptional = true;
    kind.fromDrag = &DragArrow;
    kind.constrain = &StepOf45Degrees;
    return kind;
}

SShapeKind ScaleBarKind()
{
    SShapeKind kind = Drawn(KindOf<CScaleBar>(QStringLiteral("ScaleBar"), EGeometryType_ScaleBar,
                                              &NumbersOfLine<CScaleBar>, &LineOf<CScaleBar>),
                            kFirstFreeMode + 2, "&Scale Bar", "Scale Bar");
    kind.strToolTip = QStringLiteral("Drag over the room that the bar may take");
    kind.bRegion = false;
    kind.bOptional = true;
    kind.fromDrag = &DragScaleBar;
    kind.move = &ShapeMoves::MoveLevel;
    kind.read = [](const SShapeData& data) -> ObjectPtr {
        const auto pBar = AllFinite(data.vctNumbers) ? LineOf<CScaleBar>(data.vctNumbers) : nullptr;
        return pBar ? MakeScaleBar(pBar) : nullptr;
    };
    return kind;
}

SShapeKind TextKind()
{
    SShapeKind kind;
    kind.strName = QStringLiteral("Text");
    kind.strPrefix = QStringLiteral("Object_");
    kind.eCursor = Qt::IBeamCursor;
    kind.eObject = EImageView2DDrawbleObjectType_Text;
    kind.strToolTip = QStringLiteral("Click where the text begins; Ctrl+Enter or a click elsewhere ends it");
    kind.bRegion = false;
    kind.bOptional = true;
    kind.fromDrag = &StartText;
    kind.move = &ShapeMoves::MoveText;
    kind.write = [](const Object& object) {
        const auto* pText = dynamic_cast<const CImageView2DDrawableText*>(&object);
        if (!pText)
            return SShapeData();
        const QPointF place = pText->GetPosition();
        return SShapeData{{place.x(), place.y(), pText->GetLineHeight()}, pText->GetText()};
    };
    kind.read = [](const SShapeData& data) -> ObjectPtr {
        const Numbers& n = data.vctNumbers;
        if (n.size() != 3 || !AllFinite(n) || n[2] <= 0.0 || data.strText.isEmpty())
            return nullptr;
        auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetPosition(QPointF(n[0], n[1]));
        pText->SetLineHeight(n[2]);
        pText->SetText(data.strText);
        return pText;
    };
    return Drawn(kind, kFirstFreeMode + 1, "&Text", "Text");
}

SShapeKind ArrayKind()
{
    SShapeKind kind = KindOf<CGeometryArray>(QStringLiteral("GeometryArray"), EGeometryType_GeometryArray,
                                             &NumbersOfArray, &ArrayOf);
    kind.move = &ShapeMoves::MoveArray;
    return kind;
}

/// In the order of the tool panel.
std::deque<SShapeKind> BuiltIn()
{
    return {BoxKind<CRectangle>(QStringLiteral("Rectangle"), EGeometryType_Rectangle,
                                EImageView2DMode_Drawing_Rectanlge, "&Rectangle", "Rect"),
            CircleKind(),
            BoxKind<CEllipse>(QStringLiteral("Ellipse"), EGeometryType_Ellipse,
                              EImageView2DMode_Drawing_Ellipse, "&Ellipse", "Ellipse"),
            PolygonKind(),
            ArrowKind(),
            TextKind(),
            ScaleBarKind(),
            RulerKind(),
            LineKind(),
            KindOf<Point>(QStringLiteral("Point"), EGeometryType_Point, &NumbersOfPoint, &PointOf),
            ArrayKind()};
}

std::deque<SShapeKind>& Table()
{
    static std::deque<SShapeKind> vctKinds = BuiltIn();
    return vctKinds;
}

template <class Condition> const SShapeKind* FindFirst(Condition condition)
{
    const auto it = std::find_if(Table().begin(), Table().end(), condition);
    return it != Table().end() ? &*it : nullptr;
}

const SShapeKind* OfGeometry(EImageView2DDrawbleObjectType eObject, int nGeometry)
{
    return FindFirst([eObject, nGeometry](const SShapeKind& kind) {
        return kind.eObject == eObject && kind.nGeometry == nGeometry;
    });
}
} // namespace

const std::deque<SShapeKind>& ShapeKinds::All()
{
    return Table();
}

int ShapeKinds::Register(SShapeKind kind)
{
    const bool bTaken = OfKey(kind.strName.toLower()) || OfGeometry(kind.eObject, kind.nGeometry);
    if (bTaken || kind.strName.isEmpty()) {
        CLogger::Write(WARNING, "The kind of annotation \"%s\" is not registered: name or geometry is taken.",
                       kind.strName.toUtf8().constData());
        return SShapeKind::kNone;
    }
    kind.nMode = SShapeKind::kNone;
    if (kind.fromDrag || kind.fromClicks) {
        kind.nMode = kFirstFreeMode;
        for (const SShapeKind& other : Table())
            kind.nMode = std::max(kind.nMode, other.nMode + 1);
    }
    Table().push_back(std::move(kind));
    return Table().back().nMode;
}

const SShapeKind* ShapeKinds::OfMode(int nMode)
{
    return FindFirst(
        [nMode](const SShapeKind& kind) { return kind.nMode == nMode && nMode != SShapeKind::kNone; });
}

const SShapeKind* ShapeKinds::OfName(const QString& strName)
{
    return FindFirst([&strName](const SShapeKind& kind) { return kind.strName == strName; });
}

const SShapeKind* ShapeKinds::OfKey(const QString& strKey)
{
    return FindFirst([&strKey](const SShapeKind& kind) { return kind.strName.toLower() == strKey; });
}

const SShapeKind* ShapeKinds::Of(const CImageView2DDrawableObject& object)
{
    const auto* pGeometry = GeometryOf<CGeometry>(object);
    return OfGeometry(object.GetType(), pGeometry ? int(pGeometry->GetType()) : SShapeKind::kNone);
}

bool ShapeKinds::IsRegion(const CImageView2DDrawableObject& object)
{
    const SShapeKind* pKind = Of(object);
    return pKind ? pKind->bRegion : object.GetType() == EImageView2DDrawbleObjectType_Geometry;
}

QString ShapeKinds::PrefixOf(EGeometryType eGeometry)
{
    const SShapeKind* pKind =
        FindFirst([eGeometry](const SShapeKind& kind) { return kind.nGeometry == eGeometry; });
    return pKind ? pKind->strPrefix : QStringLiteral("Object_");
}

std::shared_ptr<CImageView2DDrawableGeometry> ShapeKinds::Wrap(std::shared_ptr<CGeometry> pGeometry)
{
    auto pShape = std::make_shared<CImageView2DDrawableGeometry>();
    pShape->SetData(std::move(pGeometry));
    return pShape;
}
