#include "figure/figure_lookup.h"

#include "figure/body_parts.h"
#include "figure/bone_control_links.h"
#include "figure/figure_kind.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzskeleton.h"

#include <vector>

namespace quillon {

namespace {

// What the tables say of a name, for both generations; index 1 is Genesis 8.1.
struct NameFacts {
    int controlNumber[2]; // -1: no control of that generation
    BoneSet drives[2];
};

typedef std::vector<NameFacts> FactTable; // by name id

} // namespace

static const char* rowOf(bool genesis81, int boneNumber)
{
    return genesis81 ? kBoneControlLinksG81[boneNumber] : kBoneControlLinksG8[boneNumber];
}

static void addRow(bool genesis81, int boneNumber, FactTable* facts)
{
    const QString row = QLatin1String(rowOf(genesis81, boneNumber));
    for (int from = 1, dot = row.indexOf(QLatin1Char('.'), from); dot > 0;
         from = dot + 1, dot = row.indexOf(QLatin1Char('.'), from)) {
        const int id = nameId(row.mid(from, dot - from));
        Q_ASSERT_X(id >= 0, "figure_lookup", "a link row names an unknown control");
        (*facts)[id].drives[genesis81].set(boneNumber);
    }
}

static FactTable buildFacts()
{
    NameFacts none;
    none.controlNumber[0] = none.controlNumber[1] = -1;
    FactTable facts(kNameCount, none);
    for (int i = 0; i < kControlCountG8; ++i)
        facts[controlId(false, i)].controlNumber[0] = i;
    for (int i = 0; i < kControlCountG81; ++i)
        facts[controlId(true, i)].controlNumber[1] = i;
    for (int bone = 0; bone < kBoneCount; ++bone) {
        addRow(false, bone, &facts);
        addRow(true, bone, &facts);
    }
    return facts;
}

static const FactTable& facts()
{
    static const FactTable table = buildFacts();
    return table;
}

void buildFigureTables()
{
    facts(); // numbers and links, and with them the index of names
    isFaceBone(QString()); // the answers of the name tests
}

int boneIndex(const QString& name)
{
    const int id = nameId(name); // bones come first among the ids
    return id < kBoneCount ? id : -1;
}

const QString& boneName(int boneNumber)
{
    return nameText(boneNumber);
}

DzBone* findBone(const QString& name, const DzNode* node)
{
    const DzSkeleton* skeleton = node ? node->getSkeleton() : nullptr;
    return skeleton ? skeleton->findBone(name) : nullptr;
}

DzBone* findBone(int boneNumber, const DzNode* node)
{
    return findBone(boneName(boneNumber), node);
}

int controlCount()
{
    return isGenesis81() ? kControlCountG81 : kControlCountG8;
}

int controlIndex(const QString& name)
{
    const int id = nameId(name);
    return id < 0 ? -1 : facts()[id].controlNumber[isGenesis81()];
}

const QString& controlName(int controlNumber)
{
    return nameText(controlId(isGenesis81(), controlNumber));
}

bool isBodyControl(const QString& name)
{
    return controlIndex(name) >= 0;
}

DzFloatProperty* findOwnControl(const QString& name, const DzNode* node)
{
    return node ? qobject_cast<DzFloatProperty*>(node->findProperty(name)) : nullptr;
}

DzFloatProperty* findControl(const QString& name, const DzNode* node)
{
    const DzSkeleton* skeleton = node ? node->getSkeleton() : nullptr;
    if (!skeleton)
        return nullptr;
    if (DzProperty* property = skeleton->findProperty(name))
        return qobject_cast<DzFloatProperty*>(property);
    const DzObject* object = skeleton->getObject();
    const DzMorph* morph = object ? qobject_cast<DzMorph*>(object->findModifier(name)) : nullptr;
    return morph ? morph->getValueChannel() : nullptr;
}

QString controlNameOf(const DzProperty* property)
{
    const DzMorph* morph = qobject_cast<DzMorph*>(property->getOwner());
    return morph ? morph->getName() : property->getName();
}

const char* boneControlRow(int boneNumber)
{
    return rowOf(isGenesis81(), boneNumber);
}

// The test for names that no table holds: the name between two dots of the row.
static bool rowContains(const QString& row, const QString& name)
{
    const QChar dot = QLatin1Char('.');
    for (int at = row.indexOf(name, 1); at > 0; at = row.indexOf(name, at + 1)) {
        const int end = at + name.size();
        if (row[at - 1] == dot && end < row.size() && row[end] == dot)
            return true;
    }
    return false;
}

bool controlDrivesBone(const QString& controlName, int boneNumber)
{
    if (boneNumber < 0 || boneNumber >= kBoneCount)
        return false;
    const int id = nameId(controlName);
    if (id < 0)
        return rowContains(QLatin1String(boneControlRow(boneNumber)), controlName);
    return facts()[id].drives[isGenesis81()].test(boneNumber);
}

const BoneSet& bonesDrivenBy(int controlNumber)
{
    const bool genesis81 = isGenesis81();
    return facts()[controlId(genesis81, controlNumber)].drives[genesis81];
}

} // namespace quillon
