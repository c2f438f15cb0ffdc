// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/annotation/store/AnnotationRecovery.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>
#include <tests/support/TestImages.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtTest/QtTest>
#include <cstring>
#include <random>

/// A 2D controller without docks, whose view is not shown, with one image of 200 x 150 and its store; and a
/// folder for journals of the test's own.
struct StoreBench {
    using Object = Vantor::Annotations::SObject;
    using Document = Vantor::Annotations::SDocument;

    explicit StoreBench(bool bJournal = false)
    {
        images.SetImages({MakeTestImage(200, 150, 3)});
        SCenterOptions sOptions;
        sOptions.bAnnotationJournal = bJournal;
        ctrl.SetOptions(sOptions);
    }

    static Object MakeObject(const char* szKind, std::vector<double> vctNumbers)
    {
        Object object;
        object.kind = szKind;
        object.numbers = std::move(vctNumbers);
        return object;
    }
    /// A document of one page with so many rectangles.
    static Document Many(int nCount)
    {
        Document document;
        document.pages.emplace_back();
        for (int i = 0; i < nCount; ++i) {
            Object object = MakeObject("rectangle", {i * 0.1, i / 3.0, 10.0 + i, 20.5});
            object.id = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
            document.pages[0].objects.push_back(object);
        }
        return document;
    }

    /// One step of a script that is the same for the same random numbers: what people do with annotations.
    /// There may be nothing to do.
    void RandomStep(std::mt19937& random)
    {
        const auto upTo = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
        const auto any = [&] { return geometry.GetAt(upTo(std::max(1, geometry.Size()))); };
        const double a = upTo(2000) / 7.0, b = upTo(1500) / 9.0;
        switch (upTo(12)) {
        case 0:
        case 1:
        case 2:
            store().Paste({MakeObject("rectangle", {a, b, b - a, a / 3.0})}, {});
            break;
        case 3:
            store().Paste({MakeObject("polygon", {a, b, b, a, 1, 2}), MakeObject("point", {a, b})}, {});
            break;
        case 4:
            if (const auto pObject = any())
                store().Rename(pObject, QStringLiteral("n%1").arg(upTo(50)));
            break;
        case 5:
            if (const auto pObject = any(); pObject && ShapeKinds::Of(*pObject)->nGeometry == 2)
                store().SetShape(pObject, {{b, a, a, b}, {}});
            break;
        case 6:
            store().MoveTo({any()}, upTo(5));
            break;
        case 7:
            store().SetLocked({any(), any()}, upTo(2) == 0);
            break;
        case 8:
            geometry.UnSelectedAll();
            if (const auto pObject = any())
                pObject->SetSelected(true);
            if (upTo(2) == 0)
                ctrl.DeleteSelectedObjects();
            break;
        case 9:
            store().Duplicate({any()}, {a, b});
            break;
        default:
            break;
        }
    }

    /// What a journal has of the first file that is unsaved in it.
    static Vantor::Annotations::SReport ReadJournal(const QString& strJournal, Document& document)
    {
        std::vector<AnnotationRecovery::SImage> vctImages;
        const auto report = AnnotationRecovery::Read(strJournal, vctImages);
        if (!vctImages.empty())
            document = vctImages[0].document;
        return report;
    }

    CAnnotationStore& store() { return *ctrl.GetAnnotationStore(); }

    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view{&images, &geometry, &tools, 0, nullptr};
    CImageView2DCtrl ctrl{&images, &geometry, &tools, &view, nullptr, nullptr, nullptr};
};

/// To the bit, but for what is made anew in each process.
inline bool SameObject(const StoreBench::Object& a, const StoreBench::Object& b, bool bIds = true)
{
    return (!bIds || a.id == b.id) && a.kind == b.kind && a.named == b.named &&
           (!a.named || a.name == b.name) && a.showName == b.showName && a.locked == b.locked &&
           a.visible == b.visible && a.numbers.size() == b.numbers.size() &&
           (a.numbers.empty() ||
            std::memcmp(a.numbers.data(), b.numbers.data(), a.numbers.size() * sizeof(double)) == 0) &&
           a.text == b.text && a.style.penColor == b.style.penColor && a.style.penWidth == b.style.penWidth &&
           a.style.fillColor == b.style.fillColor && a.extra == b.extra && a.unknown == b.unknown &&
           a.raw == b.raw;
}

/// The same objects in the same order on the same pages.
inline bool SameDocument(const StoreBench::Document& a, const StoreBench::Document& b, bool bIds = true)
{
    if (a.pages.size() != b.pages.size() || a.unknown != b.unknown)
        return false;
    for (std::size_t i = 0; i < a.pages.size(); ++i) {
        const auto& pageA = a.pages[i];
        const auto& pageB = b.pages[i];
        if (pageA.page != pageB.page || pageA.objects.size() != pageB.objects.size())
            return false;
        for (std::size_t k = 0; k < pageA.objects.size(); ++k)
            if (!SameObject(pageA.objects[k], pageB.objects[k], bIds))
                return false;
    }
    return true;
}
