// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors

// annotation_picture FROM WIDTH HEIGHT TO : paints a file of annotations over a white image of that size,
// with
//     the colours of the annotations, into a picture. Needs no display.
#include <Vantor/annotation/Annotations.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/store/CAnnotationStore.h>
#include <VantorCommon/annotation/store/PictureExport.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>

namespace
{
int Fail(const std::string& why)
{
    std::fprintf(stderr, "%s\n", why.c_str());
    return 1;
}
} // namespace

int main(int argc, char** argv)
{
    if (argc != 5)
        return Fail("annotation_picture FROM WIDTH HEIGHT TO");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    Vantor::Annotations::SDocument document;
    const auto report = Vantor::Annotations::Load(argv[1], {}, {}, document);
    const auto pImage = std::make_shared<Vantor::Algorithms::CImage>();
    if (!report.failure.empty() || pImage->Create(std::atoi(argv[2]), std::atoi(argv[3]), 3, 8,
                                                  Vantor::Algorithms::EImageType::Interleaved, 4) != 0)
        return Fail("no annotations or no image: " + report.failure);
    for (int y = 0; y < pImage->GetHeight(); ++y)
        std::fill_n(pImage->GetPixel(0, y), 3 * pImage->GetWidth(), static_cast<unsigned char>(255));
    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view(&images, &geometry, &tools, 0, nullptr);
    CImageView2DCtrl ctrl(&images, &geometry, &tools, &view, nullptr, nullptr, nullptr);
    images.SetImages({pImage});
    ctrl.GetAnnotationStore()->Apply(document);
    const QString strFailure = PictureExport::Save(ctrl, QString::fromLocal8Bit(argv[4]), true);
    return strFailure.isEmpty() ? 0 : Fail(strFailure.toStdString());
}
