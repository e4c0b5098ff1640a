// time_words_hyperscan [--quick] - telling from 512 KiB of text whether it is a whole-body pose and
// of which generation, beside the Hyperscan library looking for the same six words without regard
// to case, in the same run and on one thread. Prints the rows of row_table.h.
//
// Texts: a preset as it is, whose words stand early or nowhere; the same with the word of an older
// figure at its very end; one with five words at its end; one without any. The figure code that
// follows from the words Hyperscan found must be that of the identification, else the row says
// "DIFFER". Its database is built before the clock starts.
#include "bench/row_table.h"
#include "finder/pose_identify.h"

#include <hs/hs.h>

#include <cstdio>
#include <string>
#include <vector>

using namespace quillon;

static const std::size_t kBytes = 512 * 1024;
static const std::size_t kQuickBytes = 16 * 1024;
static const int kRuns = 200;

// Their numbers are bits of what was found.
static const char* const kWords[] = {"bigtoe", "pinky", "head", "abdomen2", "rheel", "breast"};
static const unsigned kWordCount = 6;
static const unsigned kBody = 1 | 2 | 4, kAbdomen2 = 8, kRHeel = 16, kBreast = 32;

// ---- texts

// A preset's keys of these bones, again and again.
static std::string presetText(std::size_t bytes, const std::vector<std::string>& bones)
{
    std::string text
        = "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"scene\" : {\n\t\t\"animations\" : [";
    for (std::size_t i = 0; text.size() < bytes; ++i) {
        const char axis = char('x' + i % 3);
        text += "\n\t\t\t{\n\t\t\t\t\"url\" : \"name://@selection/" + bones[i / 3 % bones.size()]
            + ":?rotation/" + axis + "/value\",\n\t\t\t\t\"keys\" : [\n\t\t\t\t\t[ 0, "
            + std::to_string(double(i * 7919 % 36000) / 100 - 180) + " ]\n\t\t\t\t]\n\t\t\t},";
    }
    text.resize(bytes);
    return text;
}

static std::string endingWith(const std::string& words, std::string text)
{
    return text.replace(text.size() - words.size(), words.size(), words);
}

namespace {

struct Text {
    const char* name;
    std::string bytes;
};

} // namespace

static std::vector<Text> texts(std::size_t bytes)
{
    const std::vector<std::string> body
        = {"hip", "pelvis", "lThighBend", "lThighTwist", "lShin", "lFoot", "lToe", "lBigToe",
            "abdomenLower", "abdomenUpper", "chestLower", "chestUpper", "lCollar", "lShldrBend",
            "lForearmBend", "lHand", "lThumb1", "lPinky1", "neckLower", "head"};
    const std::vector<std::string> limbs(body.begin(), body.begin() + 7);
    return {{"of a preset", presetText(bytes, body)},
        {"at the end", endingWith("BigToePinkyHeadBreastAbdomen2", presetText(bytes, limbs))},
        {"of an older preset", endingWith("rHeel", presetText(bytes, body))},
        {"nowhere", presetText(bytes, limbs)}};
}

// ---- the peer

static hs_database_t* wordDatabase() // null: the library refuses
{
    unsigned flags[kWordCount], ids[kWordCount];
    for (unsigned i = 0; i < kWordCount; ++i) {
        flags[i] = HS_FLAG_CASELESS | HS_FLAG_SINGLEMATCH;
        ids[i] = i;
    }
    hs_database_t* database = nullptr;
    hs_compile_error_t* error = nullptr;
    hs_compile_multi(kWords, flags, ids, kWordCount, HS_MODE_BLOCK, nullptr, &database, &error);
    if (error)
        std::fprintf(stderr, "%s\n", error->message);
    hs_free_compile_error(error);
    return database;
}

static int noteWord(unsigned word, unsigned long long, unsigned long long, unsigned, void* found)
{
    *static_cast<unsigned*>(found) |= 1u << word;
    return 0;
}

// Of a text whose path is that of a male figure.
static quint32 codeOfWords(unsigned found)
{
    if ((found & kBody) != kBody)
        return 0;
    return (found & kAbdomen2 ? 2u : found & kRHeel ? 3u : 8u) + (found & kBreast ? 0 : 256);
}

// ---- rows

static bool printText(const Text& text, int runs, const hs_database_t* database,
    hs_scratch_t* scratch, bench::RowTable* printed)
{
    const QString path = QLatin1String("g8m/b.duf");
    quint32 code = 0;
    unsigned found = 0;
    bench::Row row;
    row.name = std::string("words ") + text.name + ", Hyperscan";
    row.n = long(text.bytes.size());
    row.ms = bench::fastestMs(
        runs, [&] { code = figureCodeOf(text.bytes.data(), int(text.bytes.size()), path); });
    row.referenceMs = bench::fastestMs(runs, [&] {
        found = 0;
        hs_scan(
            database, text.bytes.data(), unsigned(text.bytes.size()), 0, scratch, noteWord, &found);
    });
    row.checksum = bench::addToSum(bench::kNoSum, code);
    const bool same = code == codeOfWords(found);
    row.note = same ? std::string("Hyperscan ") + hs_version() : std::string("codes DIFFER");
    bench::printRow(row, printed);
    return same;
}

int main(int argc, char** argv)
{
    const bool quick = bench::takeQuick(&argc, argv);
    hs_database_t* database = wordDatabase();
    hs_scratch_t* scratch = nullptr;
    if (!database || hs_alloc_scratch(database, &scratch) != HS_SUCCESS)
        return 1;
    bench::RowTable printed;
    bool same = true;
    bench::printHeader();
    for (const Text& text : texts(quick ? kQuickBytes : kBytes))
        same = printText(text, quick ? 1 : kRuns, database, scratch, &printed) && same;
    hs_free_scratch(scratch);
    hs_free_database(database);
    return same ? 0 : 1;
}
