// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bAnnotationsPerImage: each file of a list is unsaved, saved, loaded and recovered by
// itself.
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include "StoreBench.h"

using namespace Vantor::Annotations;
using ObjectPtr = EditFixture::ObjectPtr;
using Vantor::Algorithms::CImage;

namespace
{
std::shared_ptr<CImage> ImageOf(const QString& strPath)
{
    auto pImage = MakeTestImage(60, 40, 3);
    pImage->SetFolder(QFileInfo(strPath).path().toStdWString());
    pImage->SetName(QFileInfo(strPath).fileName().toStdWString());
    return pImage;
}

/// A list of files, with annotations carried along.
void Show(EditFixture& f, const QStringList& lstPaths, bool bJournal = false)
{
    SCenterOptions sOptions;
    sOptions.bAnnotationsPerImage = true;
    sOptions.bCarryAnnotations = true;
    sOptions.bAnnotationJournal = bJournal;
    f.ctrl->SetOptions(sOptions);
    std::vector<std::shared_ptr<CImage>> vctImages;
    for (const QString& strPath : lstPaths)
        vctImages.push_back(ImageOf(strPath));
    f.images.SetImages(vctImages);
}

const QStringList kThree{QStringLiteral("/folder/a.png"), QStringLiteral("/folder/b.png"),
                         QStringLiteral("/folder/c.png")};
const QStringList kDocument{QStringLiteral("/folder/a.pdf"), QStringLiteral("/folder/a.pdf"),
                            QStringLiteral("/folder/a.pdf")};
} // namespace

class tst_AnnotationsPerFile : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }
    static ObjectPtr Add(EditFixture& f, double x)
    {
        return Store(f).Paste({StoreBench::MakeObject("rectangle", {x, 2, 10, 5})}, {}).at(0);
    }
    static QString UnsavedOf(EditFixture& f)
    {
        QString strUnsaved;
        for (int i = 0; i < f.images.GetImageCount(); ++i)
            strUnsaved += Store(f).HasUnsaved(i) ? QLatin1Char('!') : QLatin1Char('.');
        return strUnsaved;
    }
    static std::vector<int> CountsOf(const SDocument& document)
    {
        std::vector<int> vctCounts;
        for (const SPage& page : document.pages)
            vctCounts.push_back(static_cast<int>(page.objects.size()));
        return vctCounts;
    }
    using Counts = std::vector<int>;
    using Numbers = std::vector<double>;
    static Numbers NumbersOf(const SDocument& document)
    {
        return document.pages.empty() || document.pages[0].objects.empty()
                   ? Numbers()
                   : document.pages[0].objects[0].numbers;
    }
    template <class Signal> static SReport Wait(EditFixture& f, Signal signal)
    {
        SReport report{"nothing was told", {}};
        bool bTold = false;
        QObject context;
        connect(&Store(f), signal, &context, [&](const QString&, const SReport& told) {
            report = told;
            bTold = true;
        });
        [&] { QTRY_VERIFY(bTold); }();
        return report;
    }
    QTemporaryDir m_folder;
    QString Path(const char* szName) const { return m_folder.filePath(QLatin1String(szName)); }

private Q_SLOTS:
    void eachFileIsUnsavedByItself()
    {
        EditFixture f;
        Show(f, kThree);
        QList<bool> lstTold;
        connect(&Store(f), &CAnnotationStore::signal_ChangeUnsaved, this, [&](bool b) { lstTold << b; });
        f.ctrl->slot_Next();
        Add(f, 1);
        QCOMPARE(UnsavedOf(f), QStringLiteral(".!."));
        f.ctrl->slot_Next();
        Add(f, 2);
        QCOMPARE(UnsavedOf(f), QStringLiteral(".!!"));
        QCOMPARE(lstTold, (QList<bool>{true, true}));
        Store(f).SetSaved(1);
        QCOMPARE(UnsavedOf(f), QStringLiteral("..!"));
        QVERIFY(Store(f).HasUnsaved());
        f.PressUndo();
        QVERIFY(!Store(f).HasUnsaved());
        f.PressUndo(); // away from what was saved
        QCOMPARE(UnsavedOf(f), QStringLiteral(".!."));
        f.PressRedo();
        QVERIFY(!Store(f).HasUnsaved());
        QCOMPARE(lstTold, (QList<bool>{true, true, true, false, true, false}));
    }

    void pagesOfADocumentAreMarkedByThemselvesAndSavedTogether()
    {
        EditFixture f;
        Show(f, kDocument);
        f.ctrl->slot_Next();
        Add(f, 1);
        QCOMPARE(UnsavedOf(f), QStringLiteral("!!!"));
        QVERIFY(!Store(f).IsUnsaved(0) && Store(f).IsUnsaved(1) && !Store(f).IsUnsaved(2));
        Store(f).Save(Path("a.pdf.vantor.json"), QLatin1String(kOwnFormat), 2);
        QCOMPARE(Wait(f, &CAnnotationStore::signal_Saved).failure, std::string());
        QVERIFY(!Store(f).HasUnsaved());
    }

    void aDocumentOfAnyImageCanBeTakenAndApplied()
    {
        EditFixture f;
        Show(f, kThree);
        Add(f, 1);
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(CountsOf(Store(f).TakeDocument(0)), Counts{1});
        QCOMPARE(CountsOf(Store(f).TakeDocument(2)), Counts{0});
        Store(f).Apply(Store(f).TakeDocument(0), 1);
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        QCOMPARE(UnsavedOf(f), QStringLiteral("!!."));
        QCOMPARE(Store(f).GetImageFile(1), kThree[1]);
        QCOMPARE(Store(f).GetSidecarPath(0), kThree[0] + QStringLiteral(".vantor.json"));
        QCOMPARE(Store(f).GetContext(1).imageName, std::string("b.png"));
        f.PressUndo();
        QCOMPARE(f.images.GetCurrentIndex(), 1);
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aFileIsLoadedForAnImageThatIsNotShown()
    {
        EditFixture f;
        Show(f, kThree);
        Add(f, 1);
        Store(f).Save(Path("x.vantor.json"));
        QCOMPARE(Wait(f, &CAnnotationStore::signal_Saved).failure, std::string());
        Store(f).Load(Path("x.vantor.json"), 1);
        f.ctrl->slot_SelectImage(2);
        QCOMPARE(Wait(f, &CAnnotationStore::signal_Loaded).failure, std::string());
        QCOMPARE(f.images.GetCurrentIndex(), 2);
        QCOMPARE(CountsOf(Store(f).TakeDocument(1)), Counts{1});
        QVERIFY(!Store(f).HasUnsaved());
    }

    void whatWasDrawnWhileAFileWasReadStays()
    {
        EditFixture f;
        Show(f, kThree);
        Add(f, 1);
        Store(f).Save(Path("y.vantor.json"));
        QCOMPARE(Wait(f, &CAnnotationStore::signal_Saved).failure, std::string());
        Store(f).Load(Path("y.vantor.json"));
        const ObjectPtr pDrawn = Add(f, 2);
        QCOMPARE(Wait(f, &CAnnotationStore::signal_Loaded).failure,
                 std::string("The annotations were changed meanwhile."));
        QVERIFY(f.geometry.Size() == 2 && f.geometry.GetAt(0) == pDrawn);
        QVERIFY(Store(f).HasUnsaved(0));
    }

    void aFileForAnImageOfAnotherSizeIsShownAndTold()
    {
        EditFixture f;
        Show(f, kThree);
        SDocument document = Store(f).TakeDocument();
        document.pages.at(0).width = 600;
        QVERIFY(Vantor::Annotations::Save(document, Path("z.vantor.json").toStdString(), kOwnFormat, {})
                    .failure.empty());
        Store(f).Load(Path("z.vantor.json"));
        const SReport report = Wait(f, &CAnnotationStore::signal_Loaded);
        QCOMPARE(report.remarks.size(), std::size_t(1));
        QCOMPARE(report.remarks[0].text,
                 std::string("The annotations were made for an image of 600 x 40 pixels."));
    }

    void aFileThatIsOpenedAgainBeginsWithItsFirstPage()
    {
        EditFixture f;
        Show(f, {kThree[0], kThree[1]});
        f.ctrl->slot_Next();
        const int nId = Store(f).GetPageId(1);
        f.ctrl->CloseCurrentImage();
        f.ctrl->PushImage(ImageOf(kThree[1]));
        Add(f, 1);
        QVERIFY(Store(f).GetPageId(1) != nId);
        QCOMPARE(Store(f).TakeDocument().pages.at(0).page, 0);
    }

    void anImageOfAnotherFileInItsPlaceIsAnotherPage()
    {
        EditFixture f;
        Show(f, {kThree[0]});
        Add(f, 1);
        f.ctrl->ChangeImage(ImageOf(kThree[1]), 0);
        QCOMPARE(Store(f).GetImageFile(0), kThree[1]);
        QCOMPARE(f.geometry.Size(), 0);
        f.ctrl->ChangeImage(ImageOf(kThree[1]), 0);
        QCOMPARE(Store(f).GetImageFile(0), kThree[1]);
    }

    void anImageThatIsSavedWhileAnotherIsShownKeepsItsAnnotations()
    {
        EditFixture f;
        Show(f, kThree);
        Add(f, 1);
        f.ctrl->RotateRight();
        Store(f).SetSaved();
        const unsigned int nSaved = f.images.GetImage(0)->GetUID();
        f.ctrl->slot_Next();
        Add(f, 2);
        Store(f).SetSaved();
        Q_EMIT f.ctrl->signal_ImageSaved(kThree[0], nSaved);
        QCOMPARE(UnsavedOf(f), QStringLiteral("!..")); // its places are on another picture now
        QCOMPARE(NumbersOf(Store(f).TakeDocument(0)), (Numbers{38, 1, -5, 10}));
    }

    void anImageThatIsTurnedOnWhileItIsSavedKeepsItsAnnotations()
    {
        EditFixture f;
        Show(f, kThree);
        Add(f, 1);
        f.ctrl->RotateRight();
        const unsigned int nSaved = f.images.GetImage(0)->GetUID();
        f.ctrl->RotateRight();
        Q_EMIT f.ctrl->signal_ImageSaved(kThree[0], nSaved);
        QCOMPARE(NumbersOf(Store(f).TakeDocument(0)), (Numbers{38, 1, -5, 10})); // turned once
    }

    void whatIsSavedUnderAnotherNameTakesItsAnnotationsAlong()
    {
        EditFixture f;
        Show(f, kDocument);
        Add(f, 1);
        f.ctrl->slot_Next();
        Add(f, 2);
        Add(f, 3);
        Store(f).SetSaved();
        f.ctrl->SaveFile(Path("page.png"));
        QCOMPARE(Store(f).GetImageFile(1), Path("page.png"));
        QCOMPARE(CountsOf(Store(f).TakeDocument(1)), Counts{2});
        // The document keeps them, too, and is as it was saved.
        QCOMPARE(CountsOf(Store(f).TakeDocument(0)), (Counts{1, 2, 0}));
        QCOMPARE(UnsavedOf(f), QStringLiteral(".!."));
        f.PressUndo();
        QCOMPARE(CountsOf(Store(f).TakeDocument(1)), Counts{1});
        QCOMPARE(CountsOf(Store(f).TakeDocument(0)), (Counts{1, 2, 0}));
    }

    void filesHaveThePlacesOnThePictureInTheFile()
    {
        EditFixture f;
        Show(f, {Path("t.png")});
        Add(f, 1);
        f.ctrl->RotateRight();
        f.ctrl->RotateRight();
        f.ctrl->RotateRight();
        const auto pCut = std::make_shared<CImage>();
        pCut->CopyFrom(f.ctrl->GetCurrentImgage().get());
        QCOMPARE(pCut->Crop(2, 3, 30, 40), 0);
        f.ctrl->ChangeCurrentImage(pCut, {SImageChange::EKind_Cropped, 2, 3});
        QCOMPARE(NumbersOf(Store(f).TakeDocument()), (Numbers{1, 2, 10, 5}));
        QCOMPARE(Store(f).TakeDocument().pages[0].width, 60);
        QCOMPARE(Store(f).GetContext().width, 60);
        // The places of a document become those on the image.
        const QRectF shown = f.geometry.GetAt(0)->GetBoundary();
        Store(f).Apply(Store(f).TakeDocument());
        QCOMPARE(f.geometry.GetAt(0)->GetBoundary(), shown);
        f.PressUndo();
        // Saved, it is the picture in the file, and what was saved before has wrong places.
        Store(f).SetSaved();
        f.ctrl->SaveFile(Path("t.png"));
        QCOMPARE(Store(f).TakeDocument().pages[0].width, 30);
        QCOMPARE(NumbersOf(Store(f).TakeDocument()).at(0), shown.x());
        QVERIFY(Store(f).HasUnsaved());
        f.PressUndo(); // back to the image before, which is no longer the one in the file
        f.PressUndo();
        QCOMPARE(NumbersOf(Store(f).TakeDocument()).at(0), shown.x());
        QCOMPARE(Store(f).TakeDocument().pages[0].height, 40);
    }

    void whatIsImportedOrExportedIsWhereThePictureIs()
    {
        EditFixture f;
        Show(f, {Path("u.png"), Path("v.png")});
        f.ctrl->slot_Next();
        f.ctrl->RotateRight();
        SPage page;
        page.objects = {StoreBench::MakeObject("rectangle", {1, 2, 10, 5})};
        Store(f).Import(page);
        QCOMPARE(f.geometry.GetAt(0)->GetBoundary().normalized(), QRectF(40 - 7, 1, 5, 10));
        QCOMPARE(NumbersOf(Store(f).TakeDocument()), (Numbers{1, 2, 10, 5}));
        QCOMPARE(PictureExport::Save(*f.ctrl, Path("u.svg"), true), QString());
        SDocument back;
        QCOMPARE(Vantor::Annotations::Load(Path("u.svg").toStdString(), "SVG", {}, back).failure,
                 std::string());
        const Numbers exported = NumbersOf(back);
        QCOMPARE(QRectF(exported.at(0), exported.at(1), exported.at(2), exported.at(3)).normalized(),
                 QRectF(40 - 7, 1, 5, 10));
        QCOMPARE(back.pages[0].width, 40);
    }

    void theJournalHasEachFileThatIsUnsavedAndThePlacesOnItsPicture()
    {
        QTemporaryDir home;
        qputenv("XDG_STATE_HOME", home.path().toUtf8());
        {
            EditFixture f;
            Show(f, {kThree[0], kDocument[0], kDocument[1], kDocument[2], kThree[2]}, true);
            f.ctrl->slot_SelectImage(2);
            f.ctrl->CloseCurrentImage();
            f.ctrl->slot_SelectImage(0);
            Add(f, 1);
            Store(f).SetSaved(0);
            f.ctrl->slot_SelectImage(2); // the third page of the document
            Add(f, 2);
            f.ctrl->slot_SelectImage(3);
            Add(f, 3);
            f.ctrl->RotateRight();
            Add(f, 4);
        }
        const auto vctFound = AnnotationRecovery::Find();
        QCOMPARE(vctFound.size(), std::size_t(1));
        QCOMPARE(vctFound[0].lstImages, (QStringList{kDocument[0], kThree[2]}));
        QCOMPARE(vctFound[0].nObjects, 3);
        std::vector<AnnotationRecovery::SImage> vctImages;
        QVERIFY(AnnotationRecovery::Read(vctFound[0].strJournal, vctImages).failure.empty());
        QCOMPARE(vctImages.size(), std::size_t(2));
        QCOMPARE(vctImages[0].strImage, kDocument[0]);
        QCOMPARE(CountsOf(vctImages[0].document), (Counts{0, 0, 1}));
        QCOMPARE(vctImages[0].document.pages[2].page, 2);
        const SPage& page = vctImages[1].document.pages.at(0);
        QCOMPARE(page.objects.size(), std::size_t(2));
        QCOMPARE(page.objects[1].numbers, (Numbers{3, 2, 10, 5}));
        QCOMPARE(page.width, 60);
        QCOMPARE(page.image, std::string());
    }
};

VANTOR_TEST_MAIN(tst_AnnotationsPerFile)
#include "tst_AnnotationsPerFile.moc"
