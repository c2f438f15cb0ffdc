// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// CAnnotationStore::RestoreCleared.
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include "StoreBench.h"

using namespace Vantor::Annotations;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;
using Way = std::function<void(EditFixture&)>;
Q_DECLARE_METATYPE(Way)

namespace
{
const QString kPicture = QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png");

SObject Point(double x)
{
    return StoreBench::MakeObject("point", {x, 1});
}
} // namespace

class tst_ClearedAnnotations : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }
    static ObjectPtr Add(EditFixture& f, double x) { return Store(f).Paste({Point(x)}, {}).at(0); }

private Q_SLOTS:
    void whatWentAtOnceComesBackAsOneStep_data()
    {
        QTest::addColumn<Way>("way");
        QTest::newRow("loaded") << Way([](EditFixture& f) { f.ctrl->LoadFile(kPicture); });
        QTest::newRow("turned") << Way([](EditFixture& f) { f.ctrl->RotateRight(); });
        QTest::newRow("filtered") << Way(
            [](EditFixture& f) { f.ctrl->ChangeCurrentImage(MakeTestImage(20, 10, 1)); });
        QTest::newRow("closed") << Way([](EditFixture& f) {
            f.ctrl->CloseCurrentImage();
            f.ctrl->AddImage(kPicture);
        });
        QTest::newRow("cleared") << Way([](EditFixture& f) { f.geometry.ClearObject(); });
    }
    void whatWentAtOnceComesBackAsOneStep()
    {
        QFETCH(Way, way);
        EditFixture f;
        QCOMPARE(Store(f).CountCleared(), 0);
        const ObjectPtr a = Add(f, 1), b = Add(f, 2);
        Store(f).MoveTo({a}, 0);
        way(f);
        QCOMPARE(f.geometry.Size(), 0);
        QCOMPARE(Store(f).CountCleared(), 2);
        const ObjectPtr c = Add(f, 3);
        Store(f).SetSaved();
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.GetObjects(), (Objects{a, b, c}));
        QVERIFY(Store(f).HasUnsaved());
        QCOMPARE(Store(f).CountCleared(), 0);
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), Objects{c});
        QVERIFY(!Store(f).HasUnsaved());
        QCOMPARE(Store(f).CountCleared(), 2);
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), (Objects{a, b, c}));
    }

    void onlyTheLastOnesAreKept()
    {
        EditFixture f;
        const std::weak_ptr<CImageView2DDrawableObject> first = Add(f, 1);
        f.geometry.ClearObject();
        f.ctrl->LoadFile(kPicture); // nothing goes, so the first ones stay
        QCOMPARE(Store(f).CountCleared(), 1);
        const ObjectPtr b = f.AddRectangle(1, 2, 3, 4), c = f.AddRectangle(1, 2, 3, 4);
        f.geometry.ClearObject();
        QCOMPARE(Store(f).CountCleared(), 2);
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.GetObjects(), (Objects{c, b}));
        QVERIFY(!first.expired()); // a step has it
    }

    void whatUndoHasBroughtBackIsNotBroughtBackTwice()
    {
        EditFixture f;
        Add(f, 1);
        f.ctrl->RotateRight();
        f.PressUndo();
        QCOMPARE(Store(f).CountCleared(), 0);
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(f.ctrl->CanRedo()); // no step was made
    }

    void whatWasLoadedAgainGivesWayToWhatItWas()
    {
        EditFixture f;
        const ObjectPtr a = Add(f, 1), b = Add(f, 2);
        const SDocument saved = Store(f).TakeDocument();
        Store(f).SetShape(a, {{7, 7}, {}});
        f.ctrl->LoadFile(kPicture);
        Store(f).Apply(saved); // as a file would
        QCOMPARE(f.geometry.Size(), 2);
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.GetObjects(), (Objects{b, a}));
        QCOMPARE(Store(f).TakeDocument().pages.at(0).objects.at(1).numbers, (std::vector<double>{7, 7}));
    }

    void eachPageGetsItsOwnBack()
    {
        EditFixture f;
        SCenterOptions sOptions;
        sOptions.bAnnotationsPerImage = true;
        f.ctrl->SetOptions(sOptions);
        const auto open = [&f] {
            std::vector<std::shared_ptr<Vantor::Algorithms::CImage>> vctPages;
            for (int i = 0; i < 3; ++i) {
                vctPages.push_back(MakeTestImage(60, 40, 3));
                vctPages.back()->SetFolder(L"/folder");
                vctPages.back()->SetName(L"a.pdf");
            }
            f.images.SetImages(vctPages);
        };
        open();
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_SelectImage(2);
        const ObjectPtr c = Add(f, 3);
        f.images.Clear();
        open();
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(Store(f).CountCleared(), 1);
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.GetObjects(), Objects{c});
        f.ctrl->slot_SelectImage(0);
        Store(f).RestoreCleared();
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(f.geometry.GetObjects(), Objects{c});
    }

    void theyBelongToThePageOnWhichTheyCameBack()
    {
        EditFixture f;
        f.images.SetImages({MakeTestImage(9, 9, 1), MakeTestImage(9, 9, 1)});
        Add(f, 1);
        f.geometry.ClearObject();
        f.ctrl->slot_Next();
        Store(f).RestoreCleared();
        f.ctrl->slot_Previous();
        Add(f, 2);
        for (const SPage& page : Store(f).TakeDocument().pages)
            QCOMPARE(page.objects.size(), std::size_t(page.page == 1 ? 2 : 0));
    }
};

VANTOR_TEST_MAIN(tst_ClearedAnnotations)
#include "tst_ClearedAnnotations.moc"
