// SPDX-License-Identifier: Apache-2.0
// Names unknown: replaces the file of this name in the work directory, which is searched first,
// when that was not generated.
