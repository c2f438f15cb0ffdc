// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// What is open, as the settings keep it between two runs.
namespace Session
{
/// The files of one viewer and the index of the image on show; a document is one file of many images.
struct SOpen {
    QStringList lstFiles; ///< absolute paths, in the order of the list
    int nCurrent = 0;
};

/// A text without quotes, which the settings refuse. @param vctViewers  the first is viewer 0
QString ToText(const std::vector<SOpen>& vctViewers);
/// The opposite; what cannot be read counts as nothing.
std::vector<SOpen> FromText(const QString& strText);
} // namespace Session
