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
/// Receives the progress, 0 to 1; the operation calls it as often as it likes.
using ProcessProgress = std::function<void(double dblDone)>;

/// A processing tool as a value: the title of its window, its parameters, and its work.
/// CCenterCtrl::RegisterOperation makes a tool of it.
struct SProcessOperation {
    QString strTitle;                             ///< title of the window, and name of the tool
    std::vector<SProcessParameter> vctParameters; ///< from top to bottom
    /// Changes the image, which nobody else holds. A null region means the whole image; only pixels of the
    /// region should change. Runs on the GUI thread and blocks it. An exception counts as a failure.
    /// @return the reason of a failure, a sentence in English; empty for a success
    std::function<QString(Vantor::Algorithms::CImage& image, const Vantor::Geometry::CGeometry* pRegion,
                          const ProcessValues& vctValues, const ProcessProgress& progress)>
        apply;
};
