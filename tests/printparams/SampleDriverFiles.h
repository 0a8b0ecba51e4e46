#pragma once

#include <QString>

// The sample drivers of the print-parameter library, as the tests use them.
namespace SampleDriverFiles {

// Replaces "dtp/" of the test's application directory with fresh copies of
// the samples and removes the library's list of installed drivers, so each
// test starts from the committed files whatever earlier tests changed.
bool restage();

// Path of a sample .prs file in the application directory, e.g.
// prsPath("BexUV2513_CMYKWV").
QString prsPath(const QString &baseName);

// The library's list of installed drivers in the application directory.
QString registryPath();

} // namespace SampleDriverFiles
