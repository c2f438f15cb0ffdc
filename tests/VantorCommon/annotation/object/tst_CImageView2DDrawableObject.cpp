// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>

#include <QApplication>
#include <type_traits>

namespace
{
// The base with the least that makes it concrete.
class CPlainObject : public CImageView2DDrawableObject
{
public:
    CPlainObject() : CImageView2DDrawableObject(static_cast<EImageView2DDrawbleObjectType>(2)) {}
    QRectF GetBoundary() const override { return {}; }
    void MoveTopLeftTo(const QPointF&) override {}
    bool FindResizePoint(double, const QPointF&, QPointF&, double) const override { return false; }
    void MoveResizePoint(const QPointF&, const QPointF&) override {}
};

using Object = CImageView2DDrawableObject;
} // namespace

class tst_CImageView2DDrawableObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theKindsAreTextGeometryAndRulerWith2Unused()
    {
        QCOMPARE(int(EImageView2DDrawbleObjectType_Text), 0);
        QCOMPARE(int(EImageView2DDrawbleObjectType_Geometry), 1);
        QCOMPARE(int(EImageView2DDrawbleObjectType_Ruler), 3);
        QVERIFY((std::is_same_v<std::underlying_type_t<EImageView2DDrawbleObjectType>, int>));
    }

    void defaultsOfANewObject()
    {
        const CPlainObject object;
        QCOMPARE(int(object.GetType()), 2);
        QCOMPARE(object.GetSelected(), false);
        QCOMPARE(object.GetDisplayName(), true);
        QVERIFY(!object.GetExtraInfo().isValid());
        QCOMPARE(object.GetMouseOffset(), QPointF(0.0, 0.0));
        QCOMPARE(object.GetPen(), QPen(Qt::NoPen));
        QCOMPARE(object.GetBrushFilled(), QBrush(Qt::NoBrush));
        QCOMPARE(object.parent(), nullptr);
    }

    void everyObjectHasAnIdentifierOfItsOwn()
    {
        const CPlainObject a;
        const CPlainObject b;
        QVERIFY(a.GetUID() != b.GetUID());
    }

    void theSignalCarriesTheObjectsOwnIdentifier()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetSelected(true);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.first().first().toUInt(), object.GetUID());
    }

    void setSelectedTrueTwiceEmitsOneSignal()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetSelected(true);
        object.SetSelected(true);
        QCOMPARE(spy.count(), 1);
        QVERIFY(object.GetSelected());
        object.SetSelected(false);
        QCOMPARE(spy.count(), 2);
        QVERIFY(!object.GetSelected());
    }

    void anEqualDisplayNameFlagEmitsNothing()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetDisplayName(true);
        QCOMPARE(spy.count(), 0);
        object.SetDisplayName(false);
        QCOMPARE(spy.count(), 1);
        QVERIFY(!object.GetDisplayName());
    }

    void aMouseOffsetThatIsFuzzilyEqualChangesNothing_data()
    {
        QTest::addColumn<QPointF>("stored");
        QTest::addColumn<QPointF>("given");
        QTest::addColumn<bool>("bChanges");
        QTest::newRow("zero, within 1e-12") << QPointF(0, 0) << QPointF(1e-12, -1e-12) << false;
        QTest::newRow("zero, beyond 1e-12") << QPointF(0, 0) << QPointF(1.1e-12, 0) << true;
        QTest::newRow("1000, relatively within") << QPointF(1000, 5) << QPointF(1000 + 0.9e-9, 5) << false;
        QTest::newRow("1000, relatively beyond") << QPointF(1000, 5) << QPointF(1000 + 1.2e-9, 5) << true;
        QTest::newRow("only y differs") << QPointF(1000, 5) << QPointF(1000, 6) << true;
    }

    void aMouseOffsetThatIsFuzzilyEqualChangesNothing()
    {
        QFETCH(QPointF, stored);
        QFETCH(QPointF, given);
        QFETCH(bool, bChanges);
        CPlainObject object;
        object.SetMouseOffset(stored);
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetMouseOffset(given);
        QCOMPARE(spy.count(), bChanges ? 1 : 0);
        QCOMPARE(object.GetMouseOffset().x(), bChanges ? given.x() : stored.x());
        QCOMPARE(object.GetMouseOffset().y(), bChanges ? given.y() : stored.y());
    }

    void extraInfoIsStoredWithoutASignal()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetExtraInfo(QVariant(42));
        QCOMPARE(object.GetExtraInfo(), QVariant(42));
        QCOMPARE(spy.count(), 0);
    }

    void deliberatelySetPenAndSetBrushWithAnEqualValueEmitEachTime()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetPen(QPen(Qt::red));
        object.SetPen(QPen(Qt::red));
        QCOMPARE(spy.count(), 2);
        QCOMPARE(object.GetPen(), QPen(Qt::red));
        object.SetBrushFilled(QBrush(Qt::blue));
        object.SetBrushFilled(QBrush(Qt::blue));
        QCOMPARE(spy.count(), 4);
        QCOMPARE(object.GetBrushFilled(), QBrush(Qt::blue));
    }

    void withoutANameItIsNamedByItsIdentifier()
    {
        const CPlainObject object;
        QCOMPARE(object.GetName(), QStringLiteral("Object_") + QString::number(object.GetUID()));
    }

    void theFirstDifferentNameIsKeptForGoodAndMayBecomeEmptyAgain()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetName(QStringLiteral("left %d%s"));
        QCOMPARE(object.GetName(), QStringLiteral("left %d%s"));
        QCOMPARE(spy.count(), 1);
        object.SetName(QStringLiteral("left %d%s"));
        QCOMPARE(spy.count(), 1);
        object.SetName(QString());
        QCOMPARE(object.GetName(), QString());
        QCOMPARE(spy.count(), 2);
    }

    void theEmptyNameOnANewObjectLeavesItNamedByItsIdentifier()
    {
        CPlainObject object;
        QSignalSpy spy(&object, &Object::signal_ChangeDrawableObjectProperty);
        object.SetName(QString());
        object.SetName(QStringLiteral(""));
        QCOMPARE(spy.count(), 0);
        QVERIFY(object.GetName().startsWith(QStringLiteral("Object_")));
    }

    void pointsAndPairsAreComparedByTheCoresTolerance()
    {
        QVERIFY(Object::CompareEqual(QPointF(1, 2), QPointF(1 + 5e-10, 2 - 5e-10)));
        QVERIFY(!Object::CompareEqual(QPointF(1, 2), QPointF(1 + 5e-9, 2)));
        QVERIFY(!Object::CompareEqual(QPointF(1, 2), QPointF(1, 2 + 5e-9)));
        QVERIFY(Object::CompareEqual(1.0, 1.0 + 5e-10, 7.0, 7.0));
        QVERIFY(!Object::CompareEqual(1.0, 7.0, 1.0, 7.0));
        QVERIFY(!Object::CompareEqual(1.0, 1.0, 7.0, 7.1));
    }

    void theCoresComparisonOfTwoValuesIsNotHidden()
    {
        QVERIFY(Object::CompareEqual(0.0, 1e-10));
        QVERIFY(!Object::CompareEqual(0.0, 1e-8));
        QVERIFY(Object::CompareEqual(0.0f, 1e-7f));
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DDrawableObject)
#include "tst_CImageView2DDrawableObject.moc"
