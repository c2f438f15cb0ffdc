// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <VantorCommon/process/operation/SProcessParameter.h>

#include <QString>
#include <QVariant>
#include <functional>
#include <vector>

namespace Vantor::Algorithms
{
class CImage;
}

namespace Vantor::Geometry
{
class CGeometry;
}

/// The values of an operation's parameters, in their order, each within its range and of its type.
using ProcessValues = std::vector<QVariant>;
/// Tells how much of the work is done, 0 to 1; called as often as the operation likes. When a run in the
/// background is cancelled, it throws an exception of its own, which the operation lets pass.
using ProcessProgress = std::function<void(double dblDone)>;

/// A processing tool as a value: what its window is called, what people may choose, and what it does.
/// CCenterCtrl::RegisterOperation makes a tool of it.
struct SProcessOperation {
    QString strTitle;                             ///< of the window, and the name of the tool
    std::vector<SProcessParameter> vctParameters; ///< from top to bottom
    /// Changes the image, which nobody else holds. A null region is the whole image; only its pixels should
    /// change. Called on the GUI thread, which it blocks; with SCenterOptions::bBackground on a thread of a
    /// pool. An exception is taken for a failure.
    /// @return why the image could not be changed, a sentence in English; empty for a success
    std::function<QString(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion,
                          const ProcessValues& vctValues, const ProcessProgress& progress)>
        apply;
};
