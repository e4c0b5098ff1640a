// index_tables.h - made-up pose indexes with their ranks for the searches of browsing: such as
// users have, such in which every pose matches, and such as lie on the edge of what the searches
// tell apart. The same seed gives the same index everywhere.
#pragma once

#include "finder/browse_tables.h"
#include "finder/category_table.h"
#include "finder/pose_ranks.h"
#include "reference/pass_tables.h"

namespace quillon {
namespace reference {

enum class IndexKind { Random, Clustered, Alike, Adversarial };

// What the signatures lie near: the tables of every category, those of the reference pose from the
// figure.
struct IndexModels {
    std::vector<BrowseTables> of; // by category
};
IndexModels modelsFor(const DzSkeleton* figure, DzTime time);

// One more entry, of the kind; an Alike one matches every category's filters of the type `like`.
int addMadeEntry(IndexKind kind, const IndexModels& models, int like, Dice* dice);
void makeIndex(IndexKind kind, int count, const IndexModels& models, int like, Dice* dice);

// A record for about every share-th hash of the index, and some for hashes that it does not have.
std::vector<RankRecord> madeRanks(int share, Dice* dice);
// Makes them the rank table's, through its file.
void putRanks(const std::vector<RankRecord>& records);

} // namespace reference
} // namespace quillon
