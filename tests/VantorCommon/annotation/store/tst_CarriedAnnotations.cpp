// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// SCenterOptions::bCarryAnnotations.
#include <Vantor/geometry/CCircle.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/SImageChange.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include "StoreBench.h"

#include <set>

using namespace Vantor::Annotations;
using namespace Vantor::Geometry;
using Vantor::Algorithms::CImage;
using ObjectPtr = EditFixture::ObjectPtr;
using Pixels = std::set<std::pair<int, int>>;

namespace
{
/// The pixels of a shape on an image.
Pixels PixelsOf(const ObjectPtr& pObject, const CImage& image)
{
    Pixels pixels;
    const auto* pGeometry = ShapeKinds::GeometryOf<CGeometry>(*pObject);
    if (!pGeometry)
        return pixels;
    for (const SPixelRun& run : pGeometry->GetPixelRuns(image.GetWidth(), image.GetHeight()))
        for (int x = run.nBegin; x < run.nEnd; ++x)
            pixels.insert({x, run.nRow});
    return pixels;
}

/// Where a pixel goes, told by the pixels of an image alone: each has a value of its own.
Pixels Follow(const Pixels& pixels, const CImage& before, const CImage& after)
{
    std::map<std::array<int, 3>, std::pair<int, int>> places;
    const auto valueOf = [](const unsigned char* p) { return std::array<int, 3>{p[0], p[1], p[2]}; };
    for (int y = 0; y < after.GetHeight(); ++y)
        for (int x = 0; x < after.GetWidth(); ++x)
            places[valueOf(after.GetPixel(x, y))] = {x, y};
    Pixels moved;
    for (const auto& [x, y] : pixels) {
        const auto it = places.find(valueOf(before.GetPixel(x, y)));
        if (it != places.end())
            moved.insert(it->second);
    }
    return moved;
}

std::shared_ptr<CImage> NumberedImage(int nWidth, int nHeight)
{
    auto pImage = MakeTestImage(nWidth, nHeight, 3);
    for (int y = 0; y < nHeight; ++y)
        for (int x = 0; x < nWidth; ++x) {
            unsigned char* p = pImage->GetPixel(x, y);
            p[0] = static_cast<unsigned char>(x);
            p[1] = static_cast<unsigned char>(y);
            p[2] = 7;
        }
    return pImage;
}

void UseOption(EditFixture& f, bool bOn = true)
{
    SCenterOptions sOptions;
    sOptions.bCarryAnnotations = bOn;
    f.ctrl->SetOptions(sOptions);
    f.images.SetImages({NumberedImage(60, 40)});
}

SObject Object(const char* szKind, std::vector<double> vctNumbers)
{
    SObject object;
    object.kind = szKind;
    object.numbers = std::move(vctNumbers);
    return object;
}

/// All kinds, with odd numbers and every sign.
void AddAll(CAnnotationStore& store)
{
    SObject text = Object("text", {5.3, 3.1, 4.0});
    text.text = "ab";
    store.Paste({Object("rectangle", {10.3, 5.2, 20.1, 10.7}), Object("rectangle", {40.3, 30.2, -20.1, 7.7}),
                 Object("rectangle", {0.1, 0.1, 0.2, 0.2, 0.3, 0.3}),
                 Object("ellipse", {12.3, 35.2, 20.1, -14.4}), Object("circle", {20.3, 20.2, 9.1}),
                 Object("polygon", {3.3, 4.2, 50.1, 10.7, 30.3, 33.3}),
                 Object("ruler", {3.3, 4.2, 50.1, 10.7}), Object("line", {3.3, 4.2, 50.1, 30.7}),
                 Object("arrow", {3.3, 4.2, 5.1, 30.7}), Object("point", {33.3, 24.2}),
                 Object("geometryarray", {2, 4, 3.2, 4.1, 5.4, 6.2, 3, 3, 20.3, 30.1, 5.5}), text},
                {});
}

using Change = std::function<void(CImageView2DCtrl&)>;

void ChangeBy(CImageView2DCtrl& ctrl, const SImageChange& sChange, int (*change)(CImage&))
{
    const auto pImage = std::make_shared<CImage>();
    pImage->CopyFrom(ctrl.GetCurrentImgage().get());
    QCOMPARE(change(*pImage), 0);
    ctrl.ChangeCurrentImage(pImage, sChange);
}
} // namespace
Q_DECLARE_METATYPE(Change)

class tst_CarriedAnnotations : public QObject
{
    Q_OBJECT

private:
    static CAnnotationStore& Store(EditFixture& f) { return *f.ctrl->GetAnnotationStore(); }
    static void AddChanges()
    {
        using C = SImageChange;
        QTest::addColumn<Change>("change");
        QTest::newRow("right") << Change([](CImageView2DCtrl& ctrl) { ctrl.RotateRight(); });
        QTest::newRow("left") << Change([](CImageView2DCtrl& ctrl) { ctrl.RotateLeft(); });
        QTest::newRow("round") << Change([](CImageView2DCtrl& ctrl) {
            ChangeBy(ctrl, {C::EKind_TurnedRound},
                     [](CImage& image) { return image.FlipHorizontally() + image.FlipVertically(); });
        });
        QTest::newRow("flip x") << Change([](CImageView2DCtrl& ctrl) {
            ChangeBy(ctrl, {C::EKind_FlippedX}, [](CImage& image) { return image.FlipHorizontally(); });
        });
        QTest::newRow("flip y") << Change([](CImageView2DCtrl& ctrl) {
            ChangeBy(ctrl, {C::EKind_FlippedY}, [](CImage& image) { return image.FlipVertically(); });
        });
        QTest::newRow("crop") << Change([](CImageView2DCtrl& ctrl) {
            ChangeBy(ctrl, {C::EKind_Cropped, 7, 3}, [](CImage& image) { return image.Crop(7, 3, 40, 30); });
        });
    }

private Q_SLOTS:
    void shapesCoverTheSamePixelsOfTheNewImage_data() { AddChanges(); }
    void shapesCoverTheSamePixelsOfTheNewImage()
    {
        QFETCH(Change, change);
        EditFixture f;
        UseOption(f);
        AddAll(Store(f));
        const auto vctObjects = f.geometry.GetObjects();
        QCOMPARE(vctObjects.size(), std::size_t(12));
        const auto pBefore = f.images.GetCurrentImage();
        std::vector<Pixels> vctBefore;
        for (const ObjectPtr& pObject : vctObjects)
            vctBefore.push_back(PixelsOf(pObject, *pBefore));
        change(*f.ctrl);
        const auto pAfter = f.images.GetCurrentImage();
        QVERIFY(pAfter != pBefore);
        QCOMPARE(f.geometry.GetObjects(), vctObjects);
        int nPixels = 0;
        for (std::size_t i = 0; i < vctObjects.size(); ++i) {
            const Pixels now = PixelsOf(vctObjects[i], *pAfter);
            QVERIFY2(now == Follow(vctBefore[i], *pBefore, *pAfter), qPrintable(vctObjects[i]->GetName()));
            nPixels += static_cast<int>(now.size());
        }
        QVERIFY(nPixels > 1000);
    }

    void undoAndRedoAreExact_data() { AddChanges(); }
    void undoAndRedoAreExact()
    {
        QFETCH(Change, change);
        EditFixture f;
        UseOption(f);
        AddAll(Store(f));
        const auto pBefore = f.images.GetCurrentImage();
        const SDocument before = Store(f).TakeDocument();
        Store(f).SetSaved();
        change(*f.ctrl);
        const SDocument after = Store(f).TakeDocument();
        const auto pAfter = f.images.GetCurrentImage();
        QVERIFY(Store(f).HasUnsaved());
        QVERIFY(!SameDocument(before, after));
        for (int i = 0; i < 3; ++i) {
            f.PressUndo();
            QVERIFY(SameDocument(Store(f).TakeDocument(), before));
            QCOMPARE(f.images.GetCurrentImage(), pBefore);
            QVERIFY(!Store(f).HasUnsaved());
            f.PressRedo();
            QVERIFY(SameDocument(Store(f).TakeDocument(), after));
            QCOMPARE(f.images.GetCurrentImage(), pAfter);
        }
    }

    void aQuarterTurnToTheRightIsExactInItsNumbers()
    {
        EditFixture f;
        UseOption(f);
        Store(f).Paste({Object("rectangle", {10.3, 5.2, 20.1, -10.7}), Object("circle", {3.1, 4.2, 5.3})},
                       {});
        f.ctrl->RotateRight();
        const auto vctObjects = Store(f).TakeDocument().pages.at(0).objects;
        const auto vctBox = vctObjects.at(0).numbers;
        QVERIFY(vctBox[0] == 40 - 5.2 && vctBox[1] == 10.3 && vctBox[2] == 10.7 && vctBox[3] == 20.1);
        QCOMPARE(vctObjects.at(1).numbers, (std::vector<double>{40 - 4.2, 3.1, 5.3}));
    }

    void whatCannotBePaintedStaysAsItIsAndIsTold()
    {
        EditFixture f;
        UseOption(f);
        SObject later;
        later.raw = "{\"kind\":\"later\"}";
        SDocument document;
        document.pages.resize(1);
        document.pages[0].objects = {Object("unheard", {1, 2}), Object("point", {3, 4}), later};
        Store(f).Apply(document);
        QList<int> lstTold;
        connect(&Store(f), &CAnnotationStore::signal_NotCarried, this, [&](int n) { lstTold << n; });
        f.ctrl->RotateRight();
        QCOMPARE(lstTold, QList<int>{2});
        const auto vctObjects = Store(f).TakeDocument().pages.at(0).objects;
        QCOMPARE(vctObjects.at(0).numbers, (std::vector<double>{1, 2}));
        QCOMPARE(vctObjects.at(1).numbers, (std::vector<double>{36, 3}));
        QCOMPARE(vctObjects.at(2).raw, later.raw);
        f.PressUndo();
        QCOMPARE(lstTold.size(), 1);                                  // they are at their places again
        ChangeBy(*f.ctrl, SImageChange(), [](CImage&) { return 0; }); // nothing moves
        QCOMPARE(lstTold.size(), 1);
    }

    void aTextStaysUprightWithItsMiddleInPlace()
    {
        EditFixture f;
        UseOption(f);
        SObject object = Object("text", {5, 0, 4});
        object.text = "some letters";
        const ObjectPtr pText = Store(f).Paste({object}, {}).at(0);
        const QRectF before = pText->GetBoundary();
        f.ctrl->RotateRight();
        const QRectF after = pText->GetBoundary();
        QCOMPARE(after.size(), before.size());
        QCOMPARE(after.center(), QPointF(40 - before.center().y(), before.center().x()));
    }

    void aFilterLeavesThemWhereTheyAre()
    {
        EditFixture f;
        UseOption(f);
        AddAll(Store(f));
        Store(f).SetSaved();
        const SDocument before = Store(f).TakeDocument();
        f.ctrl->ChangeCurrentImage(NumberedImage(60, 40));
        QVERIFY(SameDocument(Store(f).TakeDocument(), before));
        QVERIFY(!Store(f).HasUnsaved());
        f.ctrl->ChangeCurrentImage(NumberedImage(61, 40));
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QVERIFY(SameDocument(Store(f).TakeDocument(), before));
        f.PressUndo();
        QVERIFY(SameDocument(Store(f).TakeDocument(), before));
    }

    void withoutTheOptionTheyGo()
    {
        EditFixture f;
        UseOption(f, false);
        AddAll(Store(f));
        f.ctrl->RotateRight();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 12);
        f.ctrl->ChangeCurrentImage(NumberedImage(60, 40));
        QCOMPARE(f.geometry.Size(), 0);
    }

    void whatCameAfterwardsGoesBackByTheInverse()
    {
        EditFixture f;
        UseOption(f);
        Store(f).Paste({Object("point", {1, 2})}, {});
        f.ctrl->RotateRight();
        f.PressUndo();
        const ObjectPtr pNew = Store(f).Paste({Object("rectangle", {10, 5, 20, 10})}, {}).at(0);
        f.PressRedo(); // the turn, on top of the new step
        QCOMPARE(f.BoxOf(pNew), QRectF(35, 10, -10, 20));
        f.PressUndo();
        QCOMPARE(f.BoxOf(pNew), QRectF(10, 5, 20, 10));
    }

    void aShapeThatCannotBeMovedGoesAndComesBackToItsPlace()
    {
        EditFixture f;
        UseOption(f);
        class CHost : public CRectangle
        {
        public:
            using CRectangle::CRectangle;
            EGeometryType GetType() const override { return EGeometryType_Host; }
            std::shared_ptr<CGeometry> Clone() const override { return std::make_shared<CHost>(*this); }
        };
        const ObjectPtr c = f.AddRectangle(1, 2, 3, 4);
        const ObjectPtr b = f.Add(std::make_shared<CHost>(1, 2, 3, 4));
        const ObjectPtr a = f.AddRectangle(1, 2, 3, 4);
        f.ctrl->RotateLeft();
        QCOMPARE(f.geometry.GetObjects(), (std::vector<ObjectPtr>{a, c}));
        f.PressUndo();
        QCOMPARE(f.geometry.GetObjects(), (std::vector<ObjectPtr>{a, b, c}));
        QCOMPARE(f.BoxOf(a), QRectF(1, 2, 3, 4));
    }
};

VANTOR_TEST_MAIN(tst_CarriedAnnotations)
#include "tst_CarriedAnnotations.moc"
