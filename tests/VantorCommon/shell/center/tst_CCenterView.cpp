// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>

#include <QApplication>
#include <QPointer>
#include <limits>
#include <memory>

namespace
{
constexpr int kHuge = std::numeric_limits<int>::max();

/// A centre view of 201 x 101 with four viewers.
struct SFixture {
    CCenterModel model;
    std::unique_ptr<CCenterView> pView = std::make_unique<CCenterView>(&model, nullptr);
    std::vector<QPointer<CImageViewer>> vctViewers;

    SFixture()
    {
        for (int i = 0; i < 4; ++i) {
            vctViewers.emplace_back(new CImageViewer(nullptr, i, nullptr));
            pView->AddImageView(vctViewers.back(), 9, -9);
        }
        pView->resize(201, 101);
        QObject::connect(&model, &CCenterModel::signal_ChangedSize, pView.get(), &CCenterView::slot_Update);
        pView->show();
    }

    /// Places of the viewers that are shown.
    QList<QRect> Shown() const
    {
        QList<QRect> lstRects;
        for (const auto& pViewer : vctViewers)
            if (!pViewer->isHidden())
                lstRects << pViewer->geometry();
        return lstRects;
    }
};
} // namespace

class tst_CCenterView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void anAddedViewerBecomesAHiddenChild()
    {
        CCenterModel model;
        CCenterView view(&model, nullptr);
        QPointer<CImageViewer> pViewer = new CImageViewer(nullptr, 0, nullptr);
        pViewer->show();
        view.AddImageView(pViewer, 1, 2);
        QCOMPARE(pViewer->parentWidget(), static_cast<QWidget*>(&view));
        QVERIFY(pViewer->isHidden());
        view.AddImageView(nullptr, 1, 2);
    }

    void aViewerIsFoundByItsIndexAndThereIsNoneOutside()
    {
        SFixture f;
        for (int i = 0; i < 4; ++i)
            QCOMPARE(f.pView->GetViewer(i), f.vctViewers[static_cast<std::size_t>(i)].data());
        for (const int i : {-1, 4, kHuge, std::numeric_limits<int>::min()})
            QCOMPARE(f.pView->GetViewer(i), nullptr);
        QCOMPARE(CCenterView(&f.model, nullptr).GetViewer(0), nullptr);
    }

    void aViewerThatIsGoneIsFoundNoMoreAndTheOthersKeepTheirIndex()
    {
        SFixture f;
        delete f.vctViewers[1].data();
        QCOMPARE(f.pView->GetViewer(1), nullptr);
        QCOMPARE(f.pView->GetViewer(2), f.vctViewers[2].data());
        QCOMPARE(f.pView->GetViewer(2)->GetViewID(), 2);
    }

    void theViewDeletesItsViewers()
    {
        SFixture f;
        f.pView.reset();
        for (const auto& pViewer : f.vctViewers)
            QVERIFY(!pViewer);
    }

    void aViewerThatIsGoneLeavesTheOthersTheirCells()
    {
        SFixture f;
        f.model.ChangeSize(2, 1);
        QCOMPARE(f.Shown().size(), 2);
        delete f.vctViewers[0].data();
        f.vctViewers.erase(f.vctViewers.begin());
        f.pView->resize(401, 101);
        f.pView->UpdateLayout();
        QCOMPARE(f.Shown(), QList<QRect>{QRect(200, 0, 200, 101)});
    }

    void theLayouts_data()
    {
        QTest::addColumn<int>("nColumns");
        QTest::addColumn<int>("nRows");
        QTest::addColumn<QList<QRect>>("lstExpected");
        QTest::newRow("1x1") << 1 << 1 << QList<QRect>{{0, 0, 201, 101}};
        QTest::newRow("2x1") << 2 << 1 << QList<QRect>{{0, 0, 100, 101}, {100, 0, 100, 101}};
        QTest::newRow("2x2") << 2 << 2
                             << QList<QRect>{
                                    {0, 0, 100, 50}, {100, 0, 100, 50}, {0, 50, 100, 50}, {100, 50, 100, 50}};
    }
    void theLayouts()
    {
        QFETCH(int, nColumns);
        QFETCH(int, nRows);
        QFETCH(QList<QRect>, lstExpected);
        SFixture f;
        f.model.ChangeSize(2, 2);
        f.model.ChangeSize(nColumns, nRows);
        QCOMPARE(f.Shown(), lstExpected);
    }

    void thePlaceComesFromTheBitsOfTheIndexNotFromTheColumnCount()
    {
        SFixture f;
        f.model.ChangeSize(1, 2);
        QCOMPARE(f.Shown(), (QList<QRect>{{0, 0, 201, 50}, {201, 0, 201, 50}}));
        f.model.ChangeSize(4, 1);
        QCOMPARE(f.Shown(),
                 (QList<QRect>{{0, 0, 50, 101}, {50, 0, 50, 101}, {0, 101, 50, 101}, {50, 101, 50, 101}}));
        f.model.ChangeSize(3, 1);
        QCOMPARE(f.Shown(), (QList<QRect>{{0, 0, 67, 101}, {67, 0, 67, 101}, {0, 101, 67, 101}}));
    }

    void moreCellsThanViewersChangeNothing_data()
    {
        QTest::addColumn<int>("nColumns");
        QTest::addColumn<int>("nRows");
        QTest::newRow("3x2") << 3 << 2;
        QTest::newRow("huge") << kHuge << kHuge;
        QTest::newRow("product wraps to 0 in 32 bits") << 65536 << 65536;
    }
    void moreCellsThanViewersChangeNothing()
    {
        QFETCH(int, nColumns);
        QFETCH(int, nRows);
        SFixture f;
        f.model.ChangeSize(2, 1);
        const auto lstBefore = f.Shown();
        f.model.ChangeSize(nColumns, nRows);
        QCOMPARE(f.Shown(), lstBefore);
    }

    void zeroAndNegativeGridsHideAll_data()
    {
        QTest::addColumn<int>("nColumns");
        QTest::addColumn<int>("nRows");
        QTest::newRow("0x0") << 0 << 0;
        QTest::newRow("0x2") << 0 << 2;
        QTest::newRow("2x0") << 2 << 0;
        QTest::newRow("-1x1") << -1 << 1;
        QTest::newRow("-1x-1") << -1 << -1;
        QTest::newRow("min") << std::numeric_limits<int>::min() << std::numeric_limits<int>::min();
    }
    void zeroAndNegativeGridsHideAll()
    {
        QFETCH(int, nColumns);
        QFETCH(int, nRows);
        SFixture f;
        f.model.ChangeSize(nColumns, nRows);
        QVERIFY(f.Shown().isEmpty());
        f.model.ChangeSize(1, 1);
        QCOMPARE(f.Shown().size(), 1);
    }

    void aResizeLaysOutAnew()
    {
        SFixture f;
        f.model.ChangeSize(2, 1);
        f.pView->resize(400, 300);
        QTRY_COMPARE(f.Shown(), (QList<QRect>{{0, 0, 200, 300}, {200, 0, 200, 300}}));
    }

    void aCentreViewNarrowerThanItsColumnCountGivesCellsOfWidth0AndTheViewersAreStillShown()
    {
        SFixture f;
        f.model.ChangeSize(2, 1);
        f.pView->hide();
        f.pView->resize(1, 100);
        f.pView->UpdateLayout();
        QCOMPARE(f.Shown(), (QList<QRect>{{0, 0, 0, 100}, {0, 0, 0, 100}}));
    }

    void withoutAModelNothingHappens()
    {
        CCenterView view(nullptr, nullptr);
        view.AddImageView(new CImageViewer(nullptr, 0, nullptr), 0, 0);
        view.UpdateLayout();
        view.slot_Update();
        QVERIFY(view.findChild<CImageViewer*>()->isHidden());
    }

    void theModelMayDieFirst()
    {
        auto pModel = std::make_unique<CCenterModel>();
        CCenterView view(pModel.get(), nullptr);
        view.AddImageView(new CImageViewer(nullptr, 0, nullptr), 0, 0);
        pModel.reset();
        view.UpdateLayout();
    }
};

VANTOR_TEST_MAIN(tst_CCenterView)
#include "tst_CCenterView.moc"
