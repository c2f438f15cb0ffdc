// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
// The processing tools in the menu, and the entries that change the whole image.
#include "HostSupport.h"
#include "ToolFaces.h"
#include "tests/support/TestMain.h"

#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableObject.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>

#include <cstring>

using Vantor::Algorithms::CImage;

namespace
{
/// Entries of the menu "Tools", and the titles of the windows that they open.
const std::pair<const char*, const char*> kTools[] = {
    {"Median Filter...", "Median Filter"},
    {"Sobel Filter...", "Sobel Filter"},
    {"OCR...", "OCR"},
    {"Gaussian Blur...", "Gaussian Blur"},
    {"Unsharp Mask...", "Unsharp Mask"},
    {"Threshold...", "Threshold"},
    {"Brightness, Contrast, Gamma...", "Brightness, Contrast, Gamma"},
    {"Invert...", "Invert"},
    {"Find Particles...", "Find Particles"},
};

std::shared_ptr<CImage> ImageOf(const Host& host, int nView)
{
    const auto item = CMVCManager::FindFirst(
        [&](const SMVC& each) { return each.pView && each.pView == host.Viewer(nView); });
    return item ? dynamic_cast<CImageViewerCtrl*>(item->pCtrl)->GetImage() : nullptr;
}

bool IsPixel(const CImage& image, int x, int y, const CImage& other, int nOtherX, int nOtherY)
{
    const auto nBytes = static_cast<std::size_t>(image.GetChannel());
    return std::memcmp(image.GetPixel(x, y), other.GetPixel(nOtherX, nOtherY), nBytes) == 0;
}
} // namespace

class tst_ToolsMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void theMenuBeginsWithAllToolsOfTheCentre()
    {
        Host host;
        const QList<QAction*> lstEntries = host.Entry({QStringLiteral("Tools")})->menu()->actions();
        int nEntry = 0;
        for (const auto& [pEntry, pTitle] : kTools)
            QCOMPARE(lstEntries[nEntry++]->text().remove(QLatin1Char('&')), QString::fromLatin1(pEntry));
        QVERIFY(lstEntries[nEntry]->isSeparator());
    }

    void eachEntryOpensItsToolOnTheActiveViewer()
    {
        Host host;
        QVERIFY(host.Show({kPhoto, kPhoto}));
        for (const auto& [pEntry, pTitle] : kTools) {
            host.window.activateWindow();
            host.View(1)->setFocus();
            QTRY_VERIFY(host.View(1)->hasFocus());
            host.Entry("Tools", pEntry)->trigger();
            const CImage2DProcessBaseDlg* pDlg = nullptr;
            for (const auto* pEach : host.window.findChildren<CImage2DProcessBaseDlg*>())
                if (pEach->windowTitle() == QLatin1String(pTitle))
                    pDlg = pEach;
            QVERIFY2(pDlg && pDlg->isVisible(), pTitle);
            QCOMPARE(pDlg->GetSourceImage(), QStringLiteral("Image View [1]"));
        }
    }

    void aToolThatIsNotInTheTableIsShownByItsTitle()
    {
        const SActionFace face = ToolFace(QStringLiteral("Somebody's Tool"));
        QCOMPARE(face.text.strText, QStringLiteral("Somebody's Tool..."));
        QVERIFY(face.icon.isNull() && face.lstKeys.isEmpty());
    }

    void flipsAndGreyAreOneUndoableStepEach_data()
    {
        QTest::addColumn<QString>("entry");
        for (const char* pEntry : {"Flip Horizontally", "Flip Vertically", "Greyscale"})
            QTest::newRow(pEntry) << QString::fromLatin1(pEntry);
    }
    void flipsAndGreyAreOneUndoableStepEach()
    {
        QFETCH(QString, entry);
        Host host;
        QVERIFY(host.Show({kPhoto}));
        const auto pBefore = ImageOf(host, 0);
        const int w = pBefore->GetWidth();
        const int h = pBefore->GetHeight();
        host.Entry({QStringLiteral("Edit"), entry})->trigger();
        const auto pAfter = ImageOf(host, 0);
        QVERIFY(pAfter != pBefore);
        QCOMPARE(pAfter->GetWidth(), w);
        QCOMPARE(pAfter->GetChannel(), entry == QStringLiteral("Greyscale") ? 1 : 3);
        if (entry == QStringLiteral("Flip Horizontally"))
            QVERIFY(IsPixel(*pAfter, 0, 5, *pBefore, w - 1, 5) && IsPixel(*pAfter, w - 7, 2, *pBefore, 6, 2));
        if (entry == QStringLiteral("Flip Vertically"))
            QVERIFY(IsPixel(*pAfter, 5, 0, *pBefore, 5, h - 1) && IsPixel(*pAfter, 2, h - 7, *pBefore, 2, 6));
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(ImageOf(host, 0), pBefore);
        QVERIFY(!host.IsEnabled("Edit", "Undo"));
        host.Entry("Edit", "Redo")->trigger();
        QCOMPARE(ImageOf(host, 0), pAfter);
    }

    void aCropKeepsTheBoxOfTheSelectedShapeAndUndoBringsBothBack()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(!host.IsEnabled("Edit", "Crop to the Shape"));
        host.DrawRectangle(0);
        QVERIFY(host.IsEnabled("Edit", "Crop to the Shape")); // a new annotation is selected
        const auto pBefore = ImageOf(host, 0);
        const QRectF box = host.Viewer(0)->Get2DDrawableObjects().at(0)->GetBoundary();
        host.Entry("Edit", "Crop to the Shape")->trigger();
        const auto pAfter = ImageOf(host, 0);
        const QRect kept = box.toAlignedRect();
        QVERIFY(kept.width() > 10 && kept.width() < pBefore->GetWidth());
        QCOMPARE(QSize(pAfter->GetWidth(), pAfter->GetHeight()), kept.size());
        for (const QPoint& p : {QPoint(0, 0), QPoint(3, 2), QPoint(kept.width() - 1, kept.height() - 1)})
            QVERIFY(IsPixel(*pAfter, p.x(), p.y(), *pBefore, kept.x() + p.x(), kept.y() + p.y()));
        QCOMPARE(host.Annotations(0), 1);
        const auto pShape = host.Viewer(0)->Get2DDrawableObjects().at(0);
        QCOMPARE(pShape->GetBoundary(), box.translated(-kept.topLeft()));
        host.Entry("Edit", "Undo")->trigger();
        QCOMPARE(ImageOf(host, 0), pBefore);
        QCOMPARE(host.Annotations(0), 1);
        QCOMPARE(pShape->GetBoundary(), box);
    }

    void aCropNeedsAShapeThatIsSelectedAndLiesInTheImage()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        host.DrawRectangle(0);
        const auto pShape = host.Viewer(0)->Get2DDrawableObjects().at(0);
        pShape->SetSelected(false);
        QVERIFY(!host.IsEnabled("Edit", "Crop to the Shape"));
        pShape->SetSelected(true);
        pShape->MoveTopLeftTo(QPointF(-10000.0, -10000.0));
        QVERIFY(!host.IsEnabled("Edit", "Crop to the Shape"));
    }

    void withoutAnImageTheEditsAreDisabled()
    {
        Host host;
        QVERIFY(host.Show());
        for (const char* pEntry : {"Flip Horizontally", "Flip Vertically", "Greyscale", "Crop to the Shape"})
            QVERIFY2(!host.IsEnabled("Edit", pEntry), pEntry);
    }
};

VANTOR_TEST_MAIN(tst_ToolsMenu)
#include "tst_ToolsMenu.moc"
