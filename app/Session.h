// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// The open files, in the form in which the settings keep them between two runs.
namespace Session
{
/// The files of one viewer and the index of its current image; a document is one file of many images.
struct SOpen {
    QStringList lstFiles; ///< absolute paths, in the order of the list
    int nCurrent = 0;
};

/// A text without quotes, which the settings refuse. @param vctViewers  the first is viewer 0
QString ToText(const std::vector<SOpen>& vctViewers);
/// The reverse; ignores what it cannot read.
std::vector<SOpen> FromText(const QString& strText);
} // namespace Session
