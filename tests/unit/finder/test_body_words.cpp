// The one pass over a pose file's bytes against one literal search a word.
#include "room_tests.h"
#include "scene_fixture.h"

#include "finder/body_words.h"
#include "reference/finder_reference.h"

#include <sys/mman.h>
#include <unistd.h>

#include <QtTest>

#include <cstring>

using namespace quillon;

class TestBodyWords : public QObject {
    Q_OBJECT
private slots:
    void eachWordHasItsBit_data();
    void eachWordHasItsBit();
    void wordsAreFoundAtEveryPlace_data();
    void wordsAreFoundAtEveryPlace();
    void oneWrongLetterIsNoWord_data();
    void oneWrongLetterIsNoWord();
    void everyByteInPlaceOfALetterIsTold_data();
    void everyByteInPlaceOfALetterIsTold();
    void wordsMayTouchAndOverlap();
    void randomTextsEqualTheLiteralForm();
    void nothingBesideTheBytesIsRead();
};

namespace {

struct WordRow {
    const char* word;
    unsigned bit;
};

const WordRow kWords[] = {{"bigtoe", BigToeWord}, {"pinky", PinkyWord}, {"head", HeadWord},
    {"breast", BreastWord}, {"abdomen2", Abdomen2Word}, {"rheel", HeelWord}};

// Room between two pages that cannot be read.
class GuardedBytes {
public:
    GuardedBytes()
        : m_page(int(::sysconf(_SC_PAGESIZE)))
    {
        void* all
            = ::mmap(nullptr, size_t(3 * m_page), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        m_all = static_cast<char*>(all);
        ::mprotect(m_all + m_page, size_t(m_page), PROT_READ | PROT_WRITE);
    }
    ~GuardedBytes()
    {
        ::munmap(m_all, size_t(3 * m_page));
    }
    char* atStart(const QByteArray& bytes)
    {
        return static_cast<char*>(
            std::memcpy(m_all + m_page, bytes.constData(), size_t(bytes.size())));
    }
    char* atEnd(const QByteArray& bytes)
    {
        return static_cast<char*>(std::memcpy(
            m_all + 2 * m_page - bytes.size(), bytes.constData(), size_t(bytes.size())));
    }

private:
    Q_DISABLE_COPY(GuardedBytes)
    int m_page;
    char* m_all;
};

} // namespace

static unsigned wordsIn(const QByteArray& text)
{
    return bodyWordsIn(text.constData(), text.size());
}

static QByteArray inAnyCase(QByteArray word, Random* random)
{
    for (char& each : word) {
        if (random->below(2))
            each = char(toupper(each));
    }
    return word;
}

static void addWordRows()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<unsigned>("bit");
    for (const WordRow& row : kWords)
        QTest::newRow(row.word) << QByteArray(row.word) << row.bit;
}

void TestBodyWords::eachWordHasItsBit_data()
{
    addWordRows();
}

void TestBodyWords::eachWordHasItsBit()
{
    QFETCH(QByteArray, word);
    QFETCH(unsigned, bit);
    QCOMPARE(wordsIn(word), bit);
    QCOMPARE(wordsIn(word.toUpper()), bit);
    QCOMPARE(reference::bodyWordsIn(word), bit);
    for (int length = 0; length < word.size(); ++length)
        QCOMPARE(wordsIn(word.left(length)), 0u);
    QCOMPARE(bodyWordsIn(nullptr, 0), 0u);
}

void TestBodyWords::wordsAreFoundAtEveryPlace_data()
{
    addWordRows();
}

// Across the ends of registers and blocks, in the rest behind the last whole block, as last bytes.
void TestBodyWords::wordsAreFoundAtEveryPlace()
{
    QFETCH(QByteArray, word);
    QFETCH(unsigned, bit);
    Random random(11);
    for (const int length : {64, 65, 66, 80, 128, 129, 200, 300}) {
        for (int at = 0; at + word.size() <= length; ++at) {
            QByteArray text(length, ' ');
            text.replace(at, word.size(), inAnyCase(word, &random));
            QVERIFY2(wordsIn(text) == bit, qPrintable(QString("%1 of %2").arg(at).arg(length)));
            text.truncate(at + word.size() - 1);
            QCOMPARE(wordsIn(text), 0u);
        }
    }
}

void TestBodyWords::oneWrongLetterIsNoWord_data()
{
    addWordRows();
}

void TestBodyWords::oneWrongLetterIsNoWord()
{
    QFETCH(QByteArray, word);
    for (int at = 0; at < word.size(); ++at) {
        QByteArray wrong = word;
        wrong[at] = 'x';
        QCOMPARE(wordsIn(wrong), 0u);
        QCOMPARE(wordsIn(QByteArray(70, '.') + wrong + QByteArray(70, '.')), 0u);
    }
}

void TestBodyWords::everyByteInPlaceOfALetterIsTold_data()
{
    addWordRows();
}

void TestBodyWords::everyByteInPlaceOfALetterIsTold()
{
    QFETCH(QByteArray, word);
    for (int byte = 0; byte < 256; ++byte) {
        for (int at = 0; at < word.size(); ++at) {
            QByteArray other = word;
            other[at] = char(byte);
            const unsigned literal = reference::bodyWordsIn(other);
            QCOMPARE(wordsIn(other), literal);
            QCOMPARE(wordsIn(QByteArray(9, '\0') + other + QByteArray(90, '\xe2')), literal);
        }
    }
}

void TestBodyWords::wordsMayTouchAndOverlap()
{
    for (const WordRow& first : kWords) {
        for (const WordRow& second : kWords) {
            const QByteArray text = QByteArray(first.word) + second.word;
            QCOMPARE(wordsIn(text), first.bit | second.bit);
        }
    }
    QCOMPARE(wordsIn("rheelhead rhead"), unsigned(HeelWord | HeadWord));
    QCOMPARE(wordsIn("bbigtoe"), unsigned(BigToeWord));
    QCOMPARE(wordsIn("hhead"), unsigned(HeadWord));
    QCOMPARE(wordsIn("abdomenabdomen2"), unsigned(Abdomen2Word));
}

// Pieces of words, words with a byte that is wrong, and bytes of every kind.
static QByteArray randomText(Random* random)
{
    QByteArray text;
    const int length = random->below(400);
    while (text.size() < length) {
        QByteArray word = kWords[random->below(6)].word;
        switch (random->below(5)) {
        case 0:
            word = inAnyCase(word, random);
            break;
        case 1:
            word[random->below(word.size())] = char(random->below(256));
            break;
        case 2:
            word.truncate(random->below(word.size()));
            break;
        default:
            word = QByteArray(random->below(40), char(random->below(256)));
            break;
        }
        text += word;
    }
    return text.left(length);
}

void TestBodyWords::randomTextsEqualTheLiteralForm()
{
    Random random(23);
    int seen[64] = {};
    for (int n = 0; n < 20000; ++n) {
        const QByteArray text = randomText(&random);
        const unsigned words = wordsIn(text);
        QVERIFY2(words == reference::bodyWordsIn(text), text.toPercentEncoding().constData());
        ++seen[words];
    }
    for (const int each : seen)
        QVERIFY(each > 0); // every set of words was among them
}

void TestBodyWords::nothingBesideTheBytesIsRead()
{
    GuardedBytes guarded;
    Random random(29);
    for (int length = 0; length <= 300; ++length) {
        QByteArray text(length, "abhipdr"[random.below(7)]);
        for (int n = 0; n < 20; ++n) {
            for (char& each : text)
                each = "abdehinprBH2"[random.below(12)];
            const unsigned words = reference::bodyWordsIn(text);
            QCOMPARE(bodyWordsIn(guarded.atEnd(text), length), words);
            QCOMPARE(bodyWordsIn(guarded.atStart(text), length), words);
        }
    }
}

QUILLON_TEST_WITHOUT_APPLICATION(TestBodyWords)
#include "test_body_words.moc"
