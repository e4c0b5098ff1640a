// content_walk.h - goes through a content directory and all folders below it, in the order of the
// file system. Hidden entries and links are passed over. Owns: nothing; nothing of a folder is
// listed ahead.
#pragma once

#include <QString>

#include <functional>

namespace quillon {

struct ContentVisitor {
    std::function<void(const QString& path)> visitPreset; // a file that ends in ".duf", in any case
    std::function<void(const QString& folder)> missFolder; // one that cannot be read
    std::function<bool()> isDone; // asked after every file of any name, and every folder
};

// Nothing is visited any more once it is done.
void walkContent(const QString& directory, const ContentVisitor& visitor);

// Whether there is such a folder and it gives its entries.
bool canBeListed(const QString& folder);

// Whether a file that is not there now is gone for good, as far as can be told: the content
// directory that it lies in, else its folder, gives entries. The place of a drive that is offline
// may be an empty folder.
bool isContentOnline(const QString& path);

} // namespace quillon
