// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <QString>
#include <vector>

/// Moves image files to the desktop's trash, each with its file of annotations, and brings the last one back.
/// GUI thread.
class CTrash
{
public:
    /// @return false, with every file where it was, when the image cannot be moved
    bool Move(const QString& strFile);
    /// The file that was moved last; empty when there is none to bring back.
    QString Last() const;
    /// Brings the last file back, unless another one stands in its place. @return whether that is done
    bool Restore();

private:
    struct SMoved {
        QString strFrom;
        QString strTo;
    };

    static bool Restore(const SMoved& sMoved);

    std::vector<std::vector<SMoved>> m_vctMoved; ///< first the image of each
};
