// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/job/FreeMemory_p.h>

#include <fstream>
#include <limits>
#include <string>

qint64 FreeMemory()
{
    std::ifstream file("/proc/meminfo");
    std::string name;
    qint64 nKilobytes = 0;
    while (file >> name >> nKilobytes) {
        if (name == "MemAvailable:")
            return nKilobytes * 1024;
        file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    return -1;
}
