// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include "tests/support/TestImages.h"

#include <Vantor/geometry/CPolygon.h>
#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/command/CCommand.h>
#include <VantorCommon/annotation/command/CCommandContainer.h>
#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QtTest/QtTest>
#include <memory>
#include <vector>

/// A 2D view with its models, a controller without docks and a history, for tests of the commands. The
/// image list is empty.
struct EditingBench {
    CImageView2DModel images;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D view{&images, &geometry, &tools, 0, nullptr};
    CImageView2DCtrl ctrl{&images, &geometry, &tools, &view, nullptr, nullptr, nullptr};
    CCommandContainer history;

    /// As every editing step runs: record first, then execute.
    void Run(CCommand* pCommand)
    {
        history.PushUndo(pCommand);
        pCommand->exec();
    }

    /// Shows a 100 x 100 image so large that one of its pixels measures nSize widget pixels.
    bool ShowAtPixelSize(int nSize)
    {
        if (!images.GetCurrentImage())
            images.SetImages({MakeTestImage(100, 100, 1)});
        view.resize(100 * nSize, 100 * nSize);
        view.show();
        return QTest::qWaitFor([&] { return view.GetSizePixel() == double(nSize); });
    }
};

using ObjectPtr = std::shared_ptr<CImageView2DDrawableObject>;
using ShapePtr = std::shared_ptr<CImageView2DDrawableGeometry>;

inline ShapePtr MakeShape(std::shared_ptr<Vantor::Geometry::CGeometry> pGeometry)
{
    auto pShape = std::make_shared<CImageView2DDrawableGeometry>();
    pShape->SetData(std::move(pGeometry));
    return pShape;
}

inline ShapePtr MakeRectangle(double x, double y, double width, double height)
{
    return MakeShape(std::make_shared<Vantor::Geometry::CRectangle>(x, y, width, height));
}

/// x, y, width and height of a rectangle as they are stored, signs included.
inline std::vector<double> RawBox(const ShapePtr& pShape)
{
    const auto& box = dynamic_cast<const Vantor::Geometry::CBox&>(*pShape->GetData());
    return {box.x(), box.y(), box.width(), box.height()};
}
