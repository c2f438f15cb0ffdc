// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

#include <Vantor/CProgress.h>

#include <QFile>

#include <algorithm>

namespace Vantor
{

/// Tells how much of the file has been read; cancelled, it cannot be read any more.
class CWatchedFile : public QFile
{
protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const double dblSize = static_cast<double>(std::max<qint64>(size(), 1));
        if (!CProgress::Tell(std::min(1.0, static_cast<double>(m_nRead) / dblSize)))
            return -1;
        const qint64 nBytes = QFile::readData(data, maxSize);
        m_nRead += std::max<qint64>(nBytes, 0);
        return nBytes;
    }

private:
    qint64 m_nRead = 0;
};

} // namespace Vantor
