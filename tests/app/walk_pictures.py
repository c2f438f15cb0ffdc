# SPDX-License-Identifier: MIT
"""The pictures of the documents."""


def make(viewer, folder):
    pass
