// pose_pair_products.h - the maker's own pose files: what they are called and which product they
// belong to. They lie below "data/Brannoc/poses", in a folder named by the product's number; a
// file's name begins with the pose's number and a letter for the figure: "012f0.duf".
// Owns: the table of products. Paths have forward slashes; nothing is read from disk.
#pragma once

#include <QString>

namespace quillon {

struct PosePairKind {
    bool isMakerFile;
    int kind; // 1: a pair of a woman and a man, 2: of two of the same sex, 0: no pair
};
PosePairKind posePairKind(const QString& path);

// "This is a ..."; empty for a file of another maker, and outside the index.
QString productLabel(int entry);

// Where the content library shows the pose, with the pose's number as the last letters:
// ".../People/Genesis 8 Female/Poses/Brannoc/<product>/<prefix> 012". Empty when the path is not
// the maker's or its product number is in no row.
QString productFolder(const QString& path);

// The file's folder with its last slash: equal for poses of one product.
QString productKey(const QString& path);

// The file's name, without its last four characters unless keepExtension.
QString poseFileTitle(const QString& path, bool keepExtension);

// "Brannoc/<product>/<prefix> " of a product number "001" to "014"; empty for any other.
QString productPath(const QString& number);

} // namespace quillon
