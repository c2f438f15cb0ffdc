// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/LogRecorder.h"
#include "tests/support/TestMain.h"

#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>

#include <QApplication>
#include <algorithm>
#include <functional>
#include <random>

namespace
{
using Model = CImageView2DGeometryModel;
using Object = CImageView2DDrawableObject;
using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;

ObjectPtr MakeObject(const QString& strName = QString())
{
    auto pShape = std::make_shared<CImageView2DDrawableGeometry>();
    pShape->SetData(std::make_shared<Vantor::Geometry::CRectangle>(0, 0, 5, 5));
    pShape->SetName(strName);
    return pShape;
}

std::vector<ObjectPtr> Without(std::vector<ObjectPtr> vctObjects, const std::vector<ObjectPtr>& vctGone)
{
    const auto isGone = [&vctGone](const ObjectPtr& pObject) {
        return std::find(vctGone.begin(), vctGone.end(), pObject) != vctGone.end();
    };
    vctObjects.erase(std::remove_if(vctObjects.begin(), vctObjects.end(), isGone), vctObjects.end());
    return vctObjects;
}

// Tries every set of objects.
int FewestMoves(const std::vector<ObjectPtr>& vctFrom, const std::vector<ObjectPtr>& vctTo)
{
    int nFewest = static_cast<int>(vctFrom.size());
    for (unsigned nSet = 0; nSet < 1U << vctFrom.size(); ++nSet) {
        std::vector<ObjectPtr> vctSet;
        for (std::size_t i = 0; i < vctFrom.size(); ++i)
            if ((nSet >> i & 1U) != 0)
                vctSet.push_back(vctFrom[i]);
        if (Without(vctFrom, vctSet) == Without(vctTo, vctSet))
            nFewest = std::min(nFewest, static_cast<int>(vctSet.size()));
    }
    return nFewest;
}

// Every signal of a model in the order of arrival, with the size of the list at that moment.
class SignalRecorder
{
public:
    explicit SignalRecorder(Model& model)
    {
        const auto named = [this, &model](const char* szSignal) {
            return [this, &model, szSignal](unsigned int nUID, const QString& strName) {
                m_lines << QStringLiteral("%1 %2 %3 size %4")
                               .arg(QString::fromLatin1(szSignal))
                               .arg(nUID)
                               .arg(strName)
                               .arg(model.Size());
            };
        };
        QObject::connect(&model, &Model::signal_AddDrawableObject, &m_context, named("add"));
        QObject::connect(&model, &Model::signal_BeforeDeleteDrawableObject, &m_context, named("before"));
        QObject::connect(&model, &Model::signal_DeleteDrawableObject, &m_context, named("delete"));
        QObject::connect(&model, &Model::signal_ChangeDrawableObjectProperty, &m_context,
                         [this](unsigned int nUID) { m_lines << QStringLiteral("property %1").arg(nUID); });
        QObject::connect(&model, &Model::signal_ChangeDrawingObject, &m_context,
                         [this] { m_lines << QStringLiteral("drawing"); });
        QObject::connect(&model, &Model::signal_ClearObject, &m_context,
                         [this, &model] { m_lines << QStringLiteral("clear size %1").arg(model.Size()); });
    }
    QStringList Take() { return std::exchange(m_lines, {}); }

private:
    QObject m_context;
    QStringList m_lines;
};

QString Line(const char* szFormat, const ObjectPtr& pObject)
{
    return QString::fromLatin1(szFormat).arg(pObject->GetUID());
}
} // namespace

class tst_CImageView2DGeometryModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewModelIsEmpty()
    {
        const Model model;
        QCOMPARE(model.Size(), 0);
        QVERIFY(model.GetObjects().empty());
        QVERIFY(model.GetObjectDrawing().empty());
        QVERIFY(!model.GetObjectDrawingWaiting());
    }

    void threeObjectsAddedStandNewestFirst()
    {
        Model model;
        const ObjectPtr a = MakeObject();
        const ObjectPtr b = MakeObject();
        const ObjectPtr c = MakeObject();
        for (const ObjectPtr& pObject : {a, b, c})
            model.AddObject(pObject);
        QCOMPARE(model.Size(), 3);
        QCOMPARE(model.GetAt(0), c);
        QCOMPARE(model.GetAt(1), b);
        QCOMPARE(model.GetAt(2), a);
        QVERIFY(!model.GetAt(3));
        QVERIFY(!model.GetAt(-1));
        QVERIFY((model.GetObjects() == std::vector<ObjectPtr>{c, b, a}));
        QCOMPARE(model.FindObject(b->GetUID()), b);
        QVERIFY(!model.FindObject(0xFFFFFFFFu));
    }

    void addingSelectsResetsTheOffsetLogsAndAnnouncesOnce()
    {
        Model model;
        const ObjectPtr pOther = MakeObject();
        model.AddObject(pOther);
        const ObjectPtr pObject = MakeObject(QStringLiteral("lamp"));
        pObject->SetMouseOffset(QPointF(3, 4));
        LogRecorder log;
        SignalRecorder recorder(model);
        model.AddObject(pObject);
        QVERIFY(pObject->GetSelected());
        QCOMPARE(pObject->GetMouseOffset(), QPointF(0, 0));
        QVERIFY(pOther->GetSelected());
        QCOMPARE(recorder.Take(), QStringList{Line("add %1 lamp size 2", pObject)});
        QCOMPARE(log.Take(), QStringList{Line("0:AddObject(%1)", pObject)});
    }

    void addingTheSameObjectTwiceLeavesOneEntryAndEmitsOneSignal()
    {
        Model model;
        const ObjectPtr pObject = MakeObject(QStringLiteral("x"));
        SignalRecorder recorder(model);
        LogRecorder log;
        model.AddObject(pObject);
        pObject->SetSelected(false);
        recorder.Take();
        log.Take();
        model.AddObject(pObject);
        QCOMPARE(model.Size(), 1);
        QVERIFY(!pObject->GetSelected());
        QVERIFY(recorder.Take().isEmpty());
        QVERIFY(log.Take().isEmpty());
    }

    void anEmptyPointerChangesNothingAnywhere()
    {
        Model model;
        model.AddObjectDrawingWaiting(MakeObject());
        LogRecorder log;
        SignalRecorder recorder(model);
        model.AddObject(nullptr);
        model.AddObjectDrawing(nullptr);
        model.AddObjectDrawingWaiting(nullptr);
        QVERIFY(!model.DeleteObject(nullptr));
        QCOMPARE(model.Size(), 0);
        QVERIFY(model.GetObjectDrawing().empty());
        QVERIFY(model.GetObjectDrawingWaiting() != nullptr);
        QVERIFY(recorder.Take().isEmpty());
        QVERIFY(log.Take().isEmpty());
    }

    void aPropertyChangeIsRelayedOnce()
    {
        Model model;
        const ObjectPtr pObject = MakeObject();
        model.AddObject(pObject);
        SignalRecorder recorder(model);
        pObject->SetPen(QPen(Qt::red));
        QCOMPARE(recorder.Take(), QStringList{Line("property %1", pObject)});
    }

    void deletingAnnouncesBeforeAndAfterAndKeepsTheObjectForItsHolders_data()
    {
        QTest::addColumn<bool>("bByUID");
        QTest::newRow("by pointer") << false;
        QTest::newRow("by identifier") << true;
    }

    void deletingAnnouncesBeforeAndAfterAndKeepsTheObjectForItsHolders()
    {
        QFETCH(bool, bByUID);
        Model model;
        const ObjectPtr pObject = MakeObject(QStringLiteral("lamp"));
        model.AddObject(pObject);
        LogRecorder log;
        SignalRecorder recorder(model);
        QVERIFY(bByUID ? model.DeleteObject(pObject->GetUID()) : model.DeleteObject(pObject));
        QCOMPARE(recorder.Take(), QStringList({Line("before %1 lamp size 1", pObject),
                                               Line("delete %1 lamp size 0", pObject)}));
        QCOMPARE(log.Take(), QStringList{Line("0:DeleteObject(%1)", pObject)});
        QCOMPARE(pObject.use_count(), 1L);
    }

    void deletingWhatIsNotPresentReturnsFalseAndEmitsNothing()
    {
        Model model;
        model.AddObject(MakeObject());
        SignalRecorder recorder(model);
        LogRecorder log;
        QVERIFY(!model.DeleteObject(0u));
        QVERIFY(!model.DeleteObject(MakeObject()));
        QVERIFY(recorder.Take().isEmpty());
        QVERIFY(log.Take().isEmpty());
        QCOMPARE(model.Size(), 1);
    }

    void theObjectLivesUntilTheSignalsAboutItsDeletionHaveGoneOut()
    {
        Model model;
        std::weak_ptr<Object> pWatch;
        {
            const ObjectPtr pObject = MakeObject();
            pWatch = pObject;
            model.AddObject(pObject);
        }
        bool bAlive = false;
        connect(&model, &Model::signal_DeleteDrawableObject, this, [&] { bAlive = !pWatch.expired(); });
        QVERIFY(model.DeleteObject(pWatch.lock()->GetUID()));
        QVERIFY(bAlive);
        QVERIFY(pWatch.expired());
    }

    void aReceiverMayChangeTheListWhileAnObjectIsDeleted()
    {
        Model model;
        const ObjectPtr a = MakeObject();
        const ObjectPtr b = MakeObject();
        const ObjectPtr c = MakeObject();
        model.AddObject(a);
        model.AddObject(b);
        connect(&model, &Model::signal_BeforeDeleteDrawableObject, this, [&](unsigned int nUID) {
            if (nUID == a->GetUID())
                model.DeleteObject(b);
            model.AddObject(c);
        });
        QVERIFY(model.DeleteObject(a));
        QVERIFY((model.GetObjects() == std::vector<ObjectPtr>{c}));
    }

    void afterDeletionClearingAndReturnARelayNeitherRemainsNorDoubles_data()
    {
        QTest::addColumn<bool>("bClear");
        QTest::newRow("deleted") << false;
        QTest::newRow("cleared") << true;
    }

    void afterDeletionClearingAndReturnARelayNeitherRemainsNorDoubles()
    {
        QFETCH(bool, bClear);
        Model model;
        const ObjectPtr pObject = MakeObject();
        model.AddObject(pObject);
        if (bClear)
            model.ClearObject();
        else
            model.DeleteObject(pObject);
        SignalRecorder recorder(model);
        pObject->SetPen(QPen(Qt::red));
        QVERIFY(recorder.Take().isEmpty());
        model.AddObject(pObject);
        recorder.Take();
        pObject->SetPen(QPen(Qt::red));
        QCOMPARE(recorder.Take(), QStringList{Line("property %1", pObject)});
    }

    void clearingEmptiesTheListWithOneSignalAlsoWhenItIsEmpty()
    {
        Model model;
        model.AddObject(MakeObject());
        model.AddObject(MakeObject());
        LogRecorder log;
        SignalRecorder recorder(model);
        model.ClearObject();
        model.ClearObject();
        QCOMPARE(model.Size(), 0);
        const QString strClear = QStringLiteral("clear size 0");
        QCOMPARE(recorder.Take(), QStringList({strClear, strClear}));
        QVERIFY(log.Take().isEmpty());
    }

    void unSelectedAllEmitsForChangedObjectsOnly()
    {
        Model model;
        const ObjectPtr a = MakeObject();
        const ObjectPtr b = MakeObject();
        const ObjectPtr c = MakeObject();
        for (const ObjectPtr& pObject : {a, b, c})
            model.AddObject(pObject);
        b->SetSelected(false);
        SignalRecorder recorder(model);
        model.UnSelectedAll();
        QCOMPARE(recorder.Take(), QStringList({Line("property %1", c), Line("property %1", a)}));
        for (const ObjectPtr& pObject : {a, b, c})
            QVERIFY(!pObject->GetSelected());
    }

    void aReceiverMayClearTheListWhileAllAreUnselected()
    {
        Model model;
        std::vector<ObjectPtr> vctObjects;
        for (int i = 0; i < 3; ++i) {
            vctObjects.push_back(MakeObject());
            model.AddObject(vctObjects.back());
        }
        connect(&model, &Model::signal_ChangeDrawableObjectProperty, this, [&] { model.ClearObject(); });
        model.UnSelectedAll();
        QCOMPARE(model.Size(), 0);
        for (const ObjectPtr& pObject : vctObjects)
            QVERIFY(!pObject->GetSelected());
    }

    void setSelectedObjectSelectsSetsTheOffsetAndLogs()
    {
        Model model;
        const ObjectPtr pObject = MakeObject();
        model.AddObject(pObject);
        LogRecorder log;
        SignalRecorder recorder(model);
        model.SetSelectedObject(pObject->GetUID(), false, 1.5, -2.25);
        QVERIFY(!pObject->GetSelected());
        QCOMPARE(pObject->GetMouseOffset(), QPointF(1.5, -2.25));
        QCOMPARE(log.Take(), QStringList{Line("0:SetSelectedObject(%1, 0, 1.500000, -2.250000)", pObject)});
        const QString strProperty = Line("property %1", pObject);
        QCOMPARE(recorder.Take(), QStringList({strProperty, strProperty}));
        model.SetSelectedObject(pObject->GetUID(), true, 1.5, -2.25);
        QVERIFY(pObject->GetSelected());
        QCOMPARE(log.Take(), QStringList{Line("0:SetSelectedObject(%1, 1, 1.500000, -2.250000)", pObject)});
        model.SetSelectedObject(0u, true, 9, 9);
        QVERIFY(log.Take().isEmpty());
    }

    void theDrawingKeepsItsOrderAndTakesAnObjectOnce()
    {
        Model model;
        const ObjectPtr a = MakeObject();
        const ObjectPtr b = MakeObject();
        LogRecorder log;
        SignalRecorder recorder(model);
        model.AddObjectDrawing(a);
        model.AddObjectDrawing(b);
        model.AddObjectDrawing(a);
        QVERIFY((model.GetObjectDrawing() == std::vector<ObjectPtr>{a, b}));
        const QString strDrawing = QStringLiteral("drawing");
        QCOMPARE(recorder.Take(), QStringList({strDrawing, strDrawing}));
        QCOMPARE(log.Take(), QStringList({Line("0:Add Object %1", a), Line("0:Add Object %1", b)}));
        a->SetPen(QPen(Qt::red));
        QVERIFY(recorder.Take().isEmpty());
        QCOMPARE(model.Size(), 0);
    }

    void clearingTheDrawingOnAnEmptyListStillLogsAndEmits()
    {
        Model model;
        model.AddObjectDrawing(MakeObject());
        LogRecorder log;
        SignalRecorder recorder(model);
        model.ClearObjectDrawing();
        QVERIFY(model.GetObjectDrawing().empty());
        model.ClearObjectDrawing();
        const QString strDrawing = QStringLiteral("drawing");
        const QString strClear = QStringLiteral("0:Clear Object");
        QCOMPARE(recorder.Take(), QStringList({strDrawing, strDrawing}));
        QCOMPARE(log.Take(), QStringList({strClear, strClear}));
    }

    void theWaitingObjectShowsNoNameAndSettingItAgainEmitsNothing()
    {
        Model model;
        const ObjectPtr pObject = MakeObject();
        LogRecorder log;
        SignalRecorder recorder(model);
        model.AddObjectDrawingWaiting(pObject);
        QCOMPARE(model.GetObjectDrawingWaiting(), pObject);
        QVERIFY(!pObject->GetDisplayName());
        QCOMPARE(recorder.Take(), QStringList{QStringLiteral("drawing")});
        QCOMPARE(log.Take(), QStringList{Line("0:Add Object Waiting %1", pObject)});
        model.AddObjectDrawingWaiting(pObject);
        QVERIFY(recorder.Take().isEmpty());
        QVERIFY(log.Take().isEmpty());
        const ObjectPtr pNext = MakeObject();
        model.AddObjectDrawingWaiting(pNext);
        QCOMPARE(model.GetObjectDrawingWaiting(), pNext);
    }

    void clearingTheWaitingObjectLogsWithATrailingBlankAlsoWhenNoneWaits()
    {
        Model model;
        model.AddObjectDrawingWaiting(MakeObject());
        LogRecorder log;
        SignalRecorder recorder(model);
        model.ClearObjectDrawingWaiting();
        QVERIFY(!model.GetObjectDrawingWaiting());
        model.ClearObjectDrawingWaiting();
        const QString strDrawing = QStringLiteral("drawing");
        const QString strClear = QStringLiteral("0:Clear Object Waiting ");
        QCOMPARE(recorder.Take(), QStringList({strDrawing, strDrawing}));
        QCOMPARE(log.Take(), QStringList({strClear, strClear}));
    }

    void restoringBringsObjectsBackInOrderWithTheirSelectionAndOffset()
    {
        Model model;
        const ObjectPtr a = MakeObject(QStringLiteral("a"));
        const ObjectPtr b = MakeObject(QStringLiteral("b"));
        const ObjectPtr c = MakeObject(QStringLiteral("c"));
        for (const ObjectPtr& pObject : {a, b, c})
            model.AddObject(pObject);
        b->SetSelected(false);
        b->SetMouseOffset(QPointF(3, 4));
        const auto vctObjects = model.GetObjects();
        model.ClearObject();
        LogRecorder log;
        SignalRecorder recorder(model);
        model.RestoreObjects(vctObjects);
        QVERIFY(model.GetObjects() == vctObjects);
        QVERIFY(a->GetSelected() && !b->GetSelected() && c->GetSelected());
        QCOMPARE(b->GetMouseOffset(), QPointF(3, 4));
        QCOMPARE(recorder.Take(), QStringList({Line("add %1 a size 1", a), Line("add %1 b size 2", b),
                                               Line("add %1 c size 3", c)}));
        QCOMPARE(log.Take(), QStringList({Line("0:AddObject(%1)", a), Line("0:AddObject(%1)", b),
                                          Line("0:AddObject(%1)", c)}));
        b->SetPen(QPen(Qt::red));
        QCOMPARE(recorder.Take(), QStringList{Line("property %1", b)});
    }

    void restoringSkipsEmptyAndPresentObjects()
    {
        Model model;
        const ObjectPtr a = MakeObject();
        const ObjectPtr b = MakeObject();
        model.AddObject(a);
        SignalRecorder recorder(model);
        model.RestoreObjects({b, nullptr, a});
        QVERIFY((model.GetObjects() == std::vector<ObjectPtr>{b, a}));
        QCOMPARE(recorder.Take().size(), 1);
    }

    void aChangeOfTheOrderTellsTheFewestThatMoved()
    {
        Model model;
        std::vector<ObjectPtr> vctObjects;
        for (int i = 0; i < 7; ++i)
            vctObjects.push_back(MakeObject());
        model.RestoreObjects(vctObjects);
        std::vector<ObjectPtr> vctMoved;
        connect(&model, &Model::signal_ChangeOrder, this,
                [&](const std::vector<ObjectPtr>& vctTold) { vctMoved = vctTold; });
        std::mt19937 random(3);
        for (int i = 0; i < 200; ++i) {
            const auto vctBefore = model.GetObjects();
            auto vctAfter = vctBefore;
            std::shuffle(vctAfter.begin() + static_cast<std::ptrdiff_t>(random() % 6), vctAfter.end(),
                         random);
            vctMoved.clear();
            model.SetOrder(vctAfter);
            QVERIFY(Without(vctBefore, vctMoved) == Without(vctAfter, vctMoved));
            QCOMPARE(static_cast<int>(vctMoved.size()), FewestMoves(vctBefore, vctAfter));
        }
    }
};

VANTOR_TEST_MAIN(tst_CImageView2DGeometryModel)
#include "tst_CImageView2DGeometryModel.moc"
