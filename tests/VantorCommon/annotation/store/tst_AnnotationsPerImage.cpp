// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bAnnotationsPerImage.
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include "StoreBench.h"

#include <QSignalSpy>

using namespace Vantor::Annotations;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;

namespace
{
std::shared_ptr<Vantor::Algorithms::CImage> Page(const wchar_t* szName)
{
    auto pImage = MakeTestImage(60, 40, 3);
    pImage->SetFolder(L"/folder");
    pImage->SetName(szName);
    return pImage;
}

void UseOption(EditFixture& f, int nPages = 3, bool bOn = true)
{
    SCenterOptions sOptions;
    sOptions.bAnnotationsPerImage = bOn;
    f.ctrl->SetOptions(sOptions);
    std::vector<std::shared_ptr<Vantor::Algorithms::CImage>> vctPages;
    for (int i = 0; i < nPages; ++i)
        vctPages.push_back(Page(L"a.pdf"));
    f.images.SetImages(vctPages);
}

SObject Point(double x)
{
    return StoreBench::MakeObject("point", {x, 1});
}
} // namespace

class tst_AnnotationsPerImage : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }
    static ObjectPtr Add(EditFixture& f, double x) { return Store(f).Paste({Point(x)}, {}).at(0); }
    static std::vector<int> CountsOf(const SDocument& document)
    {
        std::vector<int> vctCounts;
        for (const SPage& page : document.pages)
            vctCounts.push_back(static_cast<int>(page.objects.size()));
        return vctCounts;
    }
    using Counts = std::vector<int>;

private Q_SLOTS:
    void withoutTheOptionThereIsOneSet()
    {
        EditFixture f;
        UseOption(f, 3, false);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_Next();
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
    }

    void eachPageHasItsOwn()
    {
        EditFixture f;
        UseOption(f);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_Next();
        QCOMPARE(f.geometry.Size(), 0);
        const ObjectPtr b = Add(f, 2), c = Add(f, 3);
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl->slot_Previous();
        QCOMPARE(f.geometry.GetObjects(), (Objects{c, b}));
        f.ctrl->slot_Previous();
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
    }

    void pagingIsNoChange()
    {
        EditFixture f;
        UseOption(f);
        Add(f, 1);
        Store(f).SetSaved();
        QSignalSpy spy(&Store(f), &CAnnotationStore::signal_ChangeUnsaved);
        bool bGone = false;
        connect(&Store(f), &CAnnotationStore::signal_AnnotationsGone, this, [&] { bGone = true; });
        f.ctrl->slot_Next();
        f.ctrl->slot_Previous();
        QVERIFY(!Store(f).HasUnsaved() && spy.isEmpty() && !bGone);
    }

    void aLoadThatFailsTellsOnceThatAFileWasLoaded()
    {
        EditFixture f;
        UseOption(f);
        Add(f, 1);
        f.ctrl->slot_Next();
        Add(f, 2);
        QList<QPair<int, int>> lstGone;
        connect(&Store(f), &CAnnotationStore::signal_AnnotationsGone, this,
                [&](EAnnotationsGone eReason, int nCount) { lstGone << qMakePair(int(eReason), nCount); });
        f.ctrl->LoadFile(QStringLiteral("/nowhere/a.png"));
        QCOMPARE(f.images.GetImageCount(), 0);
        QCOMPARE(lstGone, (QList<QPair<int, int>>{{int(EAnnotationsGone_Loaded), 2}}));
        // Closing is told as such still.
        UseOption(f);
        Add(f, 1);
        f.images.Clear();
        QCOMPARE(lstGone.last(), qMakePair(int(EAnnotationsGone_Closed), 1));
    }

    void aFileThatIsAddedAgainBeginsWithItsFirstPage()
    {
        EditFixture f;
        UseOption(f);
        f.images.Clear();
        UseOption(f);
        std::vector<int> vctPages;
        for (const SPage& page : Store(f).TakeDocument().pages)
            vctPages.push_back(page.page);
        QCOMPARE(vctPages, (std::vector<int>{0, 1, 2}));
    }

    void undoingAStepOfAnotherPageShowsThatPageFirst()
    {
        EditFixture f;
        UseOption(f);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_Next();
        const ObjectPtr b = Add(f, 2);
        f.ctrl->slot_Next();
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl->slot_SelectImage(2);
        f.PressRedo();
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
        f.PressRedo();
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.geometry.GetObjects(), Objects{b});
    }

    void aClosedPageTakesItsSetAlongAndNoOther()
    {
        EditFixture f;
        UseOption(f);
        Add(f, 1);
        f.ctrl->slot_Next();
        Add(f, 2);
        f.ctrl->slot_Next();
        const ObjectPtr c = Add(f, 3);
        f.ctrl->slot_Previous();
        QList<QPair<int, int>> lstGone;
        connect(&Store(f), &CAnnotationStore::signal_AnnotationsGone, this,
                [&](EAnnotationsGone eReason, int nCount) { lstGone << qMakePair(int(eReason), nCount); });
        f.ctrl->CloseCurrentImage();
        QCOMPARE(lstGone, (QList<QPair<int, int>>{{int(EAnnotationsGone_Closed), 1}}));
        QCOMPARE(f.geometry.GetObjects(), Objects{c});
        // The step of the closed page does nothing; that of the last one still finds its page.
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QCOMPARE(f.geometry.Size(), 0);
        // In the file it stays: it is the second page still.
        QCOMPARE(CountsOf(Store(f).TakeDocument()), (Counts{0, 1, 0}));
        f.ctrl->CloseCurrentImage();
        f.ctrl->CloseCurrentImage();
        QVERIFY(!Store(f).HasUnsaved());
    }

    void anImageThatIsAddedKeepsTheOthersSets()
    {
        EditFixture f;
        UseOption(f, 1);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->PushImage(Page(L"b.png"));
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl->slot_Previous();
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
    }

    void aChangeOfAnImageTakesItsSetAndUndoBringsItBack()
    {
        EditFixture f;
        UseOption(f);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_Next();
        const ObjectPtr b = Add(f, 2);
        f.ctrl->RotateRight();
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl->slot_Previous();
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.geometry.GetObjects(), Objects{b});
        QCOMPARE(f.images.GetCurrentImage()->GetWidth(), 60);
    }

    void anImageThatIsReplacedElsewhereTakesItsOwnSet()
    {
        EditFixture f;
        UseOption(f);
        const ObjectPtr a = Add(f, 1);
        f.ctrl->slot_Next();
        Add(f, 2);
        f.ctrl->slot_Previous();
        f.ctrl->ChangeImage(Page(L"a.pdf"), 1);
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
        f.ctrl->slot_Next();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void anotherFileEndsAllSets()
    {
        EditFixture f;
        UseOption(f, 2);
        Add(f, 1);
        f.ctrl->slot_Next();
        Add(f, 2);
        QList<QPair<int, int>> lstGone;
        connect(&Store(f), &CAnnotationStore::signal_AnnotationsGone, this,
                [&](EAnnotationsGone eReason, int nCount) { lstGone << qMakePair(int(eReason), nCount); });
        f.ctrl->LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QCOMPARE(lstGone, (QList<QPair<int, int>>{{int(EAnnotationsGone_Loaded), 2}}));
        QVERIFY(!Store(f).HasUnsaved());
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo(); // its page is gone, as is the other
        f.PressUndo();
        f.PressRedo();
        f.PressRedo();
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(!Store(f).HasUnsaved());
    }

    void aDocumentHasThePagesOfOneFile()
    {
        EditFixture f;
        UseOption(f);
        Add(f, 1);
        f.ctrl->slot_SelectImage(2);
        Add(f, 2);
        Add(f, 3);
        f.ctrl->PushImage(Page(L"b.png"));
        Add(f, 4);
        QCOMPARE(CountsOf(Store(f).TakeDocument()), (Counts{1}));
        f.ctrl->slot_SelectImage(1);
        const SDocument document = Store(f).TakeDocument();
        QCOMPARE(CountsOf(document), (Counts{1, 0, 2}));
        QCOMPARE(document.pages[2].page, 2);
        QCOMPARE(document.pages[2].width, 60);
    }

    void applyingADocumentFillsAllPagesAsOneStep()
    {
        EditFixture f;
        UseOption(f);
        const ObjectPtr a = Add(f, 1);
        SDocument document;
        for (int i : {0, 2, 7}) {
            SPage page;
            page.page = i;
            page.objects = {Point(i), Point(i + 1)};
            page.objects[0].id = "a" + std::to_string(i);
            page.objects[1].id = "b" + std::to_string(i);
            document.pages.push_back(page);
        }
        Store(f).Apply(document);
        QCOMPARE(CountsOf(Store(f).TakeDocument()), (Counts{2, 0, 2, 2}));
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(f.geometry.Size(), 2);
        f.ctrl->slot_SelectImage(1);
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 0);
        QCOMPARE(f.geometry.GetObjects(), Objects{a});
        QCOMPARE(CountsOf(Store(f).TakeDocument()), (Counts{1, 0, 0}));
        f.PressRedo();
        QCOMPARE(CountsOf(Store(f).TakeDocument()), (Counts{2, 0, 2, 2}));
    }

    void savingOneFileLeavesTheOtherUnsaved()
    {
        QTemporaryDir folder;
        EditFixture f;
        UseOption(f, 1);
        Add(f, 1);
        f.ctrl->PushImage(Page(L"b.png"));
        Add(f, 2);
        const auto save = [&] {
            bool bSaved = false;
            QObject context;
            connect(&Store(f), &CAnnotationStore::signal_Saved, &context, [&] { bSaved = true; });
            Store(f).Save(folder.filePath(QStringLiteral("x%1").arg(f.images.GetCurrentIndex())));
            QTRY_VERIFY(bSaved);
        };
        save();
        QVERIFY(Store(f).HasUnsaved());
        f.ctrl->slot_Previous();
        save();
        QVERIFY(!Store(f).HasUnsaved());
    }

    void theJournalHasAllPages()
    {
        QTemporaryDir home;
        qputenv("XDG_STATE_HOME", home.path().toUtf8());
        SDocument document;
        {
            EditFixture f;
            UseOption(f);
            SCenterOptions sOptions;
            sOptions.bAnnotationsPerImage = sOptions.bAnnotationJournal = true;
            f.ctrl->SetOptions(sOptions);
            std::mt19937 random(3);
            for (int i = 0; i < 60; ++i) {
                f.ctrl->slot_SelectImage(static_cast<int>(random() % 3U));
                Add(f, i);
                if (i % 3 == 0)
                    f.PressUndo();
                if (i % 7 == 0)
                    f.ctrl->DeleteSelectedObjects();
            }
            document = Store(f).TakeDocument();
        }
        const auto vctFound = AnnotationRecovery::Find();
        QCOMPARE(vctFound.size(), std::size_t(1));
        SDocument back;
        QVERIFY(AnnotationRecovery::Read(vctFound[0].strJournal, back).failure.empty());
        QVERIFY(SameDocument(back, document));
        QVERIFY(back.pages.at(1).objects.size() > 3);
    }
};

VANTOR_TEST_MAIN(tst_AnnotationsPerImage)
#include "tst_AnnotationsPerImage.moc"
