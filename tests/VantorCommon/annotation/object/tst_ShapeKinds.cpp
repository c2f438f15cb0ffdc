// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CArrow.h>
#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <Vantor/geometry/CGeometryArray.h>
#include <Vantor/geometry/CPointList.h>
#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <Vantor/geometry/CScaleBar.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableRuler.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableScaleBar.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>

#include <QApplication>
#include <QImage>
#include <QSet>
#include <cmath>
#include <limits>

using namespace Vantor::Geometry;
using ObjectPtr = SShapeKind::ObjectPtr;

namespace
{
// Numbers that no sum of sizes gives back exactly.
constexpr double kA = 0.1, kB = 1.0 / 3.0, kC = -1234.56789, kD = 1e-7;

std::shared_ptr<CPolygon> Polygon()
{
    auto pPolygon = std::make_shared<CPolygon>();
    pPolygon->AddEdge(CLine({kA, kB}, {kC, kD}));
    pPolygon->AddEdge(CLine({kC, kD}, {kB, 9.0}));
    return pPolygon;
}

std::shared_ptr<CGeometryArray> Array()
{
    auto pArray = std::make_shared<CGeometryArray>();
    pArray->Add(Polygon());
    pArray->Add(std::make_shared<CCircle>(CPoint<double>(kA, kB), kB));
    pArray->Add(std::make_shared<CRectangle>(1, 2, -3, 4));
    return pArray;
}

/// One object of each kind.
ObjectPtr Sample(const QString& strName)
{
    const CPoint<double> a(kA, kB), b(kC, kD);
    if (strName == QLatin1String("Rectangle")) {
        const auto pRectangle = std::make_shared<CRectangle>(kA, kB, 1.0, 1.0);
        pRectangle->SetBottomRight(b);
        return ShapeKinds::Wrap(pRectangle);
    }
    if (strName == QLatin1String("Ellipse"))
        return ShapeKinds::Wrap(std::make_shared<CEllipse>(kA, kB, kC, kD));
    if (strName == QLatin1String("Circle"))
        return ShapeKinds::Wrap(std::make_shared<CCircle>(a, kB));
    if (strName == QLatin1String("Polygon"))
        return ShapeKinds::Wrap(Polygon());
    if (strName == QLatin1String("Arrow"))
        return ShapeKinds::Wrap(std::make_shared<CArrow>(a, b));
    if (strName == QLatin1String("Line"))
        return ShapeKinds::Wrap(std::make_shared<CLine>(a, b));
    if (strName == QLatin1String("Point"))
        return ShapeKinds::Wrap(std::make_shared<CPoint<double>>(b));
    if (strName == QLatin1String("GeometryArray"))
        return ShapeKinds::Wrap(Array());
    if (strName == QLatin1String("Ruler")) {
        auto pRuler = std::make_shared<CImageView2DDrawableRuler>();
        pRuler->SetData(std::make_shared<CLine>(a, b));
        return pRuler;
    }
    if (strName == QLatin1String("ScaleBar")) {
        auto pBar = std::make_shared<CImageView2DDrawableScaleBar>();
        pBar->SetData(std::make_shared<CScaleBar>(a, b));
        return pBar;
    }
    if (strName == QLatin1String("Text")) {
        auto pText = std::make_shared<CImageView2DDrawableText>();
        pText->SetText(QStringLiteral("two\nlines \u20ac"));
        pText->SetPosition(QPointF(kA, kC));
        pText->SetLineHeight(kB);
        return pText;
    }
    return nullptr;
}

/// The outline and the handles of a shape in all their digits.
QByteArray FormOf(const ObjectPtr& pObject)
{
    const auto* pGeometry = ShapeKinds::GeometryOf<CGeometry>(*pObject);
    if (!pGeometry)
        return {};
    CPointList outline, handles;
    pGeometry->GetPoints(outline, handles);
    QByteArray form = QByteArray::number(int(pGeometry->GetType()));
    for (const CPointList* pList : {&outline, &handles})
        for (int i = 0; i < pList->Size(); ++i) {
            const auto pPoint = std::dynamic_pointer_cast<CPoint<double>>(pList->At(i));
            form += ' ' + QByteArray::number(pPoint->x(), 'g', 17) + ',' +
                    QByteArray::number(pPoint->y(), 'g', 17);
        }
    return form;
}

void AddNames()
{
    QTest::addColumn<QString>("name");
    for (const SShapeKind& kind : ShapeKinds::All())
        QTest::newRow(qPrintable(kind.strName)) << kind.strName;
}
} // namespace

class tst_ShapeKinds : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyNamedModeOfDrawingHasItsKind()
    {
        const std::pair<int, const char*> modes[] = {{EImageView2DMode_Drawing_Rectanlge, "Rectangle"},
                                                     {EImageView2DMode_Drawing_Ellipse, "Ellipse"},
                                                     {EImageView2DMode_Drawing_Circle, "Circle"},
                                                     {EImageView2DMode_Drawing_Polygon, "Polygon"},
                                                     {EImageView2DMode_Drawing_Line, "Ruler"}};
        for (const auto& [nMode, szName] : modes) {
            const SShapeKind* pKind = ShapeKinds::OfMode(nMode);
            QVERIFY(pKind);
            QCOMPARE(pKind->strName, QLatin1String(szName));
            QCOMPARE(ShapeKinds::OfName(pKind->strName), pKind);
            QCOMPARE(pKind->eCursor, Qt::CrossCursor);
        }
        for (int nMode : {-1, int(EImageView2DMode_Selecting), int(EImageView2DMode_Panning), 7, 99})
            QVERIFY(!ShapeKinds::OfMode(nMode));
        QVERIFY(!ShapeKinds::OfName(QStringLiteral("Nonagon")));
    }

    void everyKindOfTheMenusHasItsOwnPicture()
    {
        QList<QImage> pictures;
        for (const SShapeKind& kind : ShapeKinds::All()) {
            if (kind.strMenu.isEmpty())
                continue;
            const QImage picture(kind.strIcon);
            QVERIFY2(!picture.isNull(), qPrintable(kind.strName));
            QVERIFY2(!pictures.contains(picture), qPrintable(kind.strName));
            pictures << picture;
        }
        QCOMPARE(pictures.size(), 7);
    }

    void namesAndModesAreUnique()
    {
        QSet<QString> names;
        QSet<int> modes;
        for (const SShapeKind& kind : ShapeKinds::All()) {
            QVERIFY(!kind.strName.isEmpty() && !names.contains(kind.strName));
            names << kind.strName;
            QCOMPARE(kind.nMode != SShapeKind::kNone, bool(kind.fromDrag) || bool(kind.fromClicks));
            QVERIFY(kind.nMode == SShapeKind::kNone || !modes.contains(kind.nMode));
            modes << kind.nMode;
        }
    }

    void anObjectIsFoundToBeOfItsKind_data() { AddNames(); }
    void anObjectIsFoundToBeOfItsKind()
    {
        QFETCH(QString, name);
        QCOMPARE(ShapeKinds::Of(*Sample(name)), ShapeKinds::OfName(name));
    }

    void whatIsWrittenIsReadBackExactly_data() { AddNames(); }
    void whatIsWrittenIsReadBackExactly()
    {
        QFETCH(QString, name);
        const SShapeKind& kind = *ShapeKinds::OfName(name);
        const ObjectPtr pObject = Sample(name);
        const SShapeData data = kind.write(*pObject);
        const ObjectPtr pBack = kind.read(data);
        QVERIFY(pBack);
        QCOMPARE(ShapeKinds::Of(*pBack), &kind);
        QCOMPARE(FormOf(pBack), FormOf(pObject));
        // A size may differ by its rounding; the corners above do not.
        const QRectF back = pBack->GetBoundary();
        const QRectF box = pObject->GetBoundary();
        QCOMPARE(back.topLeft(), box.topLeft());
        QVERIFY(std::abs(back.width() - box.width()) < 1e-9 && std::abs(back.height() - box.height()) < 1e-9);
        QCOMPARE(kind.write(*pBack).vctNumbers, data.vctNumbers);
        QCOMPARE(kind.write(*pBack).strText, data.strText);
        QVERIFY(!data.vctNumbers.empty());
    }

    void numbersThatCannotBeOfTheKindAreReadAsNothing_data() { AddNames(); }
    void numbersThatCannotBeOfTheKindAreReadAsNothing()
    {
        QFETCH(QString, name);
        const SShapeKind& kind = *ShapeKinds::OfName(name);
        const SShapeData good = kind.write(*Sample(name));
        SShapeData data = good;
        data.vctNumbers.push_back(1.0);
        QVERIFY(!kind.read(data));
        data = good;
        data.vctNumbers.pop_back();
        QVERIFY(!kind.read(data));
        for (double bad :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            data = good;
            data.vctNumbers.back() = bad;
            QVERIFY(!kind.read(data));
        }
        if (name != QLatin1String("GeometryArray"))
            QVERIFY(!kind.read({}));
    }

    void anArrayThatLiesAboutItsMembersIsReadAsNothing()
    {
        const SShapeKind& kind = *ShapeKinds::OfName(QStringLiteral("GeometryArray"));
        QVERIFY(kind.read({{0, 2, 5, 6}, {}}));   // a point
        QVERIFY(!kind.read({{0, 3, 5, 6}, {}}));  // fewer numbers than it says
        QVERIFY(!kind.read({{0, -2, 5, 6}, {}})); // fewer than none
        QVERIFY(!kind.read({{0, 1e300, 5, 6}, {}}));
        QVERIFY(!kind.read({{5, 2, 5, 6}, {}})); // a kind that is not there
        QVERIFY(!kind.read({{7, 2, 5, 6}, {}})); // arrays hold no arrays
        QVERIFY(!kind.read({{0.5, 2, 5, 6}, {}}));
    }

    void aNestedArrayIsWrittenAsItsMembers()
    {
        const SShapeKind& kind = *ShapeKinds::OfName(QStringLiteral("GeometryArray"));
        const auto pOuter = std::make_shared<CGeometryArray>();
        pOuter->Add(Array());
        pOuter->Add(std::make_shared<CRectangle>(5, 5, 9, 9));
        const ObjectPtr pBack = kind.read(kind.write(*ShapeKinds::Wrap(pOuter)));
        QVERIFY(pBack);
        QCOMPARE(ShapeKinds::GeometryOf<CGeometryArray>(*pBack)->Size(), 4);
        QCOMPARE(FormOf(pBack), FormOf(ShapeKinds::Wrap(pOuter)));
    }

    void rulersArrowsTextsAndScaleBarsAreNoRegions_data() { AddNames(); }
    void rulersArrowsTextsAndScaleBarsAreNoRegions()
    {
        QFETCH(QString, name);
        const bool bNoRegion = QStringList{QStringLiteral("Ruler"), QStringLiteral("Arrow"),
                                           QStringLiteral("Text"), QStringLiteral("ScaleBar")}
                                   .contains(name);
        QCOMPARE(ShapeKinds::IsRegion(*Sample(name)), !bNoRegion);
    }

    void aShapeOfAnUnknownKindIsARegionWithACommonName()
    {
        class CUnknown : public CRectangle
        {
        public:
            EGeometryType GetType() const override { return static_cast<EGeometryType>(5); }
        };
        const auto pObject = ShapeKinds::Wrap(std::make_shared<CUnknown>());
        QVERIFY(!ShapeKinds::Of(*pObject));
        QVERIFY(ShapeKinds::IsRegion(*pObject));
        QCOMPARE(pObject->GetName(), QStringLiteral("Object_%1").arg(pObject->GetUID()));
        QVERIFY(!ShapeKinds::IsRegion(CImageView2DDrawableText()));
    }

    void aNameOrAGeometryThatIsTakenRegistersNothing()
    {
        const std::size_t nBefore = ShapeKinds::All().size();
        LogRecorder log;
        SShapeKind kind;
        kind.nGeometry = EGeometryType_Host + 77;
        QCOMPARE(ShapeKinds::Register(kind), SShapeKind::kNone); // no name
        kind.strName = QStringLiteral("Arrow");
        QCOMPARE(ShapeKinds::Register(kind), SShapeKind::kNone);
        kind.strName = QStringLiteral("Another");
        kind.nGeometry = EGeometryType_Ellipse;
        QCOMPARE(ShapeKinds::Register(kind), SShapeKind::kNone);
        QCOMPARE(ShapeKinds::All().size(), nBefore);
        QCOMPARE(log.Take().size(), 3);
    }

    void aKindThatIsNotDrawnHasNoModeAndOneThatIsGetsTheNext()
    {
        const SShapeKind* pFirst = &ShapeKinds::All().front();
        SShapeKind kind;
        kind.strName = QStringLiteral("Stored");
        kind.nGeometry = EGeometryType_Host + 1;
        kind.nMode = EImageView2DMode_Drawing_Rectanlge; // is chosen by the table
        QCOMPARE(ShapeKinds::Register(kind), SShapeKind::kNone);
        QVERIFY(ShapeKinds::OfName(kind.strName));
        kind.fromDrag = pFirst->fromDrag;
        int nLast = 99;
        for (const char* szName : {"Drawn", "Drawn, too"}) {
            kind.strName = QLatin1String(szName);
            ++kind.nGeometry;
            const int nMode = ShapeKinds::Register(kind);
            QVERIFY(nMode > nLast);
            QCOMPARE(ShapeKinds::OfMode(nMode)->strName, kind.strName);
            nLast = nMode;
        }
        QCOMPARE(&ShapeKinds::All().front(), pFirst); // rows stay where they are
    }
};

VANTOR_TEST_MAIN(tst_ShapeKinds)
#include "tst_ShapeKinds.moc"
