// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#pragma once

namespace Vantor::Utils
{

/// Answers requests about one document until the other end closes the socket, or says what it may not.
void ServePdf(int nSocket);

} // namespace Vantor::Utils
