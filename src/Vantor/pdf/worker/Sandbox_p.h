// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

namespace Vantor::Utils
{

/// Gives up whatever the reading of a document does not need, for the rest of this process: writing, files
/// other than the system's and the fonts, the network, other programs and processes, a picture of its memory.
/// What the kernel cannot forbid stays allowed.
void EnterSandbox();

} // namespace Vantor::Utils
