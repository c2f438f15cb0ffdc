// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <Vantor/geometry/CCircle.h>
#include <Vantor/geometry/CEllipse.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QSignalSpy>
#include <cstring>

using namespace Vantor::Annotations;
using namespace Vantor::Geometry;
using ObjectPtr = EditFixture::ObjectPtr;
using Objects = std::vector<ObjectPtr>;

namespace
{
/// To the bit, so that 0 and -0 differ.
bool SameBits(const std::vector<double>& a, const std::vector<double>& b)
{
    return a.size() == b.size() &&
           (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0);
}

bool Same(const SObject& a, const SObject& b)
{
    return a.id == b.id && a.kind == b.kind && a.name == b.name && a.named == b.named &&
           a.showName == b.showName && a.locked == b.locked && a.visible == b.visible &&
           SameBits(a.numbers, b.numbers) && a.text == b.text && a.style.penColor == b.style.penColor &&
           a.style.penWidth == b.style.penWidth && a.style.fillColor == b.style.fillColor &&
           a.extra == b.extra && a.unknown == b.unknown && a.raw == b.raw;
}

SObject Object(const char* szId, const char* szKind, std::vector<double> vctNumbers)
{
    SObject object;
    object.id = szId;
    object.kind = szKind;
    object.name = "n";
    object.named = true;
    object.numbers = std::move(vctNumbers);
    return object;
}

SDocument DocumentOf(std::vector<SObject> vctObjects)
{
    SPage page;
    page.objects = std::move(vctObjects);
    SDocument document;
    document.pages.push_back(page);
    return document;
}

std::vector<std::string> IdsOf(const SDocument& document)
{
    std::vector<std::string> vctIds;
    for (const SObject& object : document.pages.at(0).objects)
        vctIds.push_back(object.raw.empty() ? object.id : object.raw);
    return vctIds;
}

using Ids = std::vector<std::string>;
} // namespace

class tst_CAnnotationStore : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }

private Q_SLOTS:
    void everyKindComesBackToTheBit()
    {
        EditFixture f;
        const double a = 0.1, b = 1.0 / 3.0, c = -1234.56789, d = 1e-7;
        std::vector<SObject> vctObjects{
            Object("1", "rectangle", {a, b, c, d}), Object("2", "ellipse", {a, b, -0.0, d}),
            Object("3", "circle", {a, b, d}),       Object("4", "polygon", {a, b, c, d, b, 9.0}),
            Object("5", "ruler", {a, b, c, d}),     Object("6", "line", {a, b, c, d}),
            Object("7", "arrow", {a, b, c, d}),     Object("8", "point", {a, b}),
            Object("9", "text", {a, b, d}),
        };
        vctObjects[8].text = "two\nlines \u20ac";
        vctObjects[0].locked = true;
        vctObjects[1].visible = false;
        vctObjects[2].showName = false;
        vctObjects[3].style = {0x80112233u, 2.5, 0x40445566u};
        vctObjects[4].extra = R"({"a":[1,2.5,"x",null,true]})";
        vctObjects[5].unknown = R"({"later":1})";
        vctObjects[6].name = "\u00e4 \"quoted\" /name";
        Store(f).Apply(DocumentOf(vctObjects));
        QCOMPARE(f.geometry.Size(), 9);
        const SPage page = Store(f).TakeDocument().pages.at(0);
        QCOMPARE(page.width, 200);
        QCOMPARE(page.height, 150);
        QCOMPARE(page.objects.size(), vctObjects.size());
        for (std::size_t i = 0; i < vctObjects.size(); ++i)
            QVERIFY2(Same(page.objects[i], vctObjects[i]), vctObjects[i].kind.c_str());
    }

    void aBoxWhoseCornerIsNoSumComesBackToTheBit()
    {
        EditFixture f;
        // 0.1 + 0.2 is not 0.3 in doubles.
        const std::vector<double> vctNumbers{0.1, 0.1, 0.2, 0.2, 0.3, 0.3};
        Store(f).Apply(DocumentOf({Object("1", "rectangle", vctNumbers)}));
        const auto pBox = f.ShapeOf<CRectangle>(f.geometry.GetAt(0));
        QCOMPARE(pBox->width(), 0.2);
        QVERIFY(pBox->bottomRight().x() == 0.3);
        QVERIFY(SameBits(Store(f).TakeDocument().pages.at(0).objects.at(0).numbers, vctNumbers));
    }

    void aCornerThatContradictsTheSizeWins()
    {
        EditFixture f;
        Store(f).Apply(DocumentOf({Object("1", "rectangle", {1, 1, 2, 2, 50, 60})}));
        QCOMPARE(f.BoxOf(f.geometry.GetAt(0)), QRectF(1, 1, 49, 59));
    }

    void whatAFormatOfFilesCannotSayOfExtraInfoIsLeftOut()
    {
        EditFixture f;
        f.AddRectangle(1, 2, 3, 4)->SetExtraInfo(QColor(Qt::red));
        f.AddRectangle(1, 2, 3, 4)->SetExtraInfo(QVariantMap{{QStringLiteral("a"), 7}});
        const SPage page = Store(f).TakeDocument().pages.at(0);
        QCOMPARE(page.objects.at(0).extra, std::string(R"({"a":7})"));
        QCOMPARE(page.objects.at(1).extra, std::string());
    }

    void anObjectKeepsItsIdThroughUndo()
    {
        EditFixture f;
        f.tool.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        f.Drag({20, 20}, {60, 50});
        const std::string id = Store(f).TakeDocument().pages.at(0).objects.at(0).id;
        QCOMPARE(id.size(), std::size_t(36));
        f.PressUndo();
        QVERIFY(Store(f).TakeDocument().pages.at(0).objects.empty());
        f.PressRedo();
        QCOMPARE(Store(f).TakeDocument().pages.at(0).objects.at(0).id, id);
    }

    void anObjectThatNobodyNamedIsNumberedAnew()
    {
        EditFixture f;
        SObject object = Object("1", "rectangle", {1, 2, 3, 4});
        object.named = false;
        object.name = "Rectangle_7777777";
        Store(f).Apply(DocumentOf({object}));
        const ObjectPtr pObject = f.geometry.GetAt(0);
        QCOMPARE(pObject->GetName(), QStringLiteral("Rectangle_%1").arg(pObject->GetUID()));
        QVERIFY(!Store(f).TakeDocument().pages.at(0).objects.at(0).named);
    }

    void whatCannotBePaintedStaysInItsPlace()
    {
        EditFixture f;
        SObject raw;
        raw.raw = R"({"kind":3})";
        Store(f).Apply(DocumentOf({Object("k0", "nonagon", {1}), Object("a", "point", {1, 1}), raw,
                                   Object("b", "point", {2, 2}), Object("k1", "rectangle", {1, 2}),
                                   Object("c", "point", {3, 3})}));
        QCOMPARE(f.geometry.Size(), 3);
        QCOMPARE(IdsOf(Store(f).TakeDocument()), (Ids{"k0", "a", raw.raw, "b", "k1", "c"}));
        f.ctrl->DeleteDrawableObject(f.geometry.GetAt(1));
        QCOMPARE(IdsOf(Store(f).TakeDocument()), (Ids{"k0", "a", raw.raw, "k1", "c"}));
        f.ctrl->DeleteDrawableObject(f.geometry.GetAt(0));
        QCOMPARE(IdsOf(Store(f).TakeDocument()), (Ids{"k0", raw.raw, "k1", "c"}));
    }

    void otherPagesOfADocumentAreKept()
    {
        EditFixture f;
        SDocument document = DocumentOf({Object("a", "point", {1, 1})});
        document.unknown = R"({"later":1})";
        SPage other;
        other.page = 4;
        other.calibration = SCalibration{"mm", 0.5, 0.25};
        other.objects = {Object("b", "point", {2, 2})};
        document.pages.push_back(other);
        Store(f).Apply(document);
        QCOMPARE(f.geometry.Size(), 1);
        const SDocument taken = Store(f).TakeDocument();
        QCOMPARE(taken.pages.size(), std::size_t(2));
        QVERIFY(Same(taken.pages[1].objects.at(0), other.objects[0]));
        QCOMPARE(taken.pages[1].calibration->unit, std::string("mm"));
        QCOMPARE(taken.unknown, document.unknown);
    }

    void theSetBelongsToThePageOnWhichItsFirstObjectWasMade()
    {
        EditFixture f;
        f.images.SetImages({MakeTestImage(20, 10, 1), MakeTestImage(30, 10, 1)});
        f.images.SetCurrentIndex(1);
        f.AddRectangle(1, 2, 3, 4);
        f.images.SetCurrentIndex(0);
        f.AddRectangle(1, 2, 3, 4);
        const SDocument document = Store(f).TakeDocument();
        QCOMPARE(document.pages.size(), std::size_t(1));
        QCOMPARE(document.pages[0].page, 1);
        QCOMPARE(document.pages[0].width, 30);
        QCOMPARE(document.pages[0].objects.size(), std::size_t(2));
    }

    void applyingIsOneStep()
    {
        EditFixture f;
        const ObjectPtr pOld = f.AddRectangle(1, 2, 3, 4);
        pOld->SetSelected(true);
        SObject raw;
        raw.raw = "{}";
        Store(f).Apply(DocumentOf({Object("a", "point", {1, 1}), raw, Object("b", "point", {2, 2})}));
        const auto vctNew = f.geometry.GetObjects();
        QCOMPARE(vctNew.size(), std::size_t(2));
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), Objects{pOld});
        QVERIFY(pOld->GetSelected());
        QCOMPARE(IdsOf(Store(f).TakeDocument()).size(), std::size_t(1));
        f.PressRedo();
        QCOMPARE(f.geometry.GetObjects(), vctNew);
        QCOMPARE(IdsOf(Store(f).TakeDocument()), (Ids{"a", "{}", "b"}));
    }

    void undoBackToTheSavedStateIsCleanAgain()
    {
        EditFixture f;
        QSignalSpy spy(&Store(f), &CAnnotationStore::signal_ChangeUnsaved);
        QVERIFY(!Store(f).HasUnsaved());
        f.tool.SetViewMode(EImageView2DMode_Drawing_Rectanlge);
        f.Drag({20, 20}, {60, 50});
        QVERIFY(Store(f).HasUnsaved());
        Store(f).SetSaved();
        QVERIFY(!Store(f).HasUnsaved());
        f.Drag({40, 40}, {70, 70}); // moves
        QVERIFY(Store(f).HasUnsaved());
        f.PressUndo();
        QVERIFY(!Store(f).HasUnsaved());
        f.PressUndo();
        QVERIFY(Store(f).HasUnsaved());
        f.PressRedo();
        QVERIFY(!Store(f).HasUnsaved());
        QCOMPARE(spy.size(), 6);
        QCOMPARE(spy.last().at(0).toBool(), false);
    }

    void aNewStepInPlaceOfAnUndoneOneIsNotClean()
    {
        EditFixture f;
        Store(f).Paste({Object("", "point", {1, 1})}, {});
        Store(f).SetSaved();
        f.PressUndo();
        Store(f).Paste({Object("", "point", {2, 2})}, {});
        QVERIFY(Store(f).HasUnsaved());
    }

    void aSelectionIsNoChange()
    {
        EditFixture f;
        f.AddRectangle(20, 20, 60, 60);
        Store(f).SetSaved();
        f.Click({40, 40});
        QVERIFY(f.geometry.GetAt(0)->GetSelected());
        Store(f).Rename(f.geometry.GetAt(0), QString()); // no step
        QVERIFY(!Store(f).HasUnsaved());
    }

    void whatIsAddedWithoutAStepIsUnsaved()
    {
        EditFixture f;
        f.AddRectangle(1, 2, 3, 4);
        QVERIFY(Store(f).HasUnsaved());
    }

    void theStoreTellsWhyAnnotationsWent()
    {
        EditFixture f;
        QList<QPair<int, int>> lstGone;
        connect(&Store(f), &CAnnotationStore::signal_AnnotationsGone, this,
                [&](EAnnotationsGone eReason, int nCount) { lstGone << qMakePair(int(eReason), nCount); });
        const auto gone = [&](EAnnotationsGone eReason, int nCount) {
            const bool bOk = lstGone == QList<QPair<int, int>>{{int(eReason), nCount}};
            lstGone.clear();
            return bOk;
        };
        f.AddRectangle(1, 2, 3, 4);
        f.AddRectangle(1, 2, 3, 4);
        f.ctrl->RotateRight();
        QVERIFY(gone(EAnnotationsGone_Turned, 2));
        f.AddRectangle(1, 2, 3, 4);
        f.ctrl->ChangeCurrentImage(MakeTestImage(20, 10, 1));
        QVERIFY(gone(EAnnotationsGone_Filtered, 1));
        f.AddRectangle(1, 2, 3, 4);
        f.geometry.ClearObject();
        QVERIFY(gone(EAnnotationsGone_Cleared, 1));
        QVERIFY(Store(f).HasUnsaved());
        f.AddRectangle(1, 2, 3, 4);
        f.ctrl->LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QVERIFY(gone(EAnnotationsGone_Loaded, 1));
        QVERIFY(!Store(f).HasUnsaved());
        f.AddRectangle(1, 2, 3, 4);
        f.ctrl->CloseCurrentImage();
        QVERIFY(gone(EAnnotationsGone_Closed, 1));
        f.ctrl->CloseCurrentImage();
        QVERIFY(lstGone.isEmpty());
        QVERIFY(!Store(f).HasUnsaved());
    }

    void aStepUndoneAfterAnotherFileWasOpenedDoesNotCountBackwards()
    {
        EditFixture f;
        const ObjectPtr pObject = f.AddRectangle(1, 2, 3, 4);
        pObject->SetSelected(true);
        f.ctrl->DeleteSelectedObjects();
        f.ctrl->LoadFile(QStringLiteral(VANTOR_TEST_DATA "/png/bricks-color.png"));
        QVERIFY(!Store(f).HasUnsaved());
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(Store(f).HasUnsaved());
    }
};

VANTOR_TEST_MAIN(tst_CAnnotationStore)
#include "tst_CAnnotationStore.moc"
