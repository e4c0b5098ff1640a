#include "figure/figure_lookup.h"

#include "figure/body_parts.h"
#include "ground/host_calls.h"

#include "dzbone.h"
#include "dzfloatproperty.h"
#include "dzmorph.h"
#include "dzobject.h"
#include "dzskeleton.h"

#include <vector>

namespace quillon {

namespace {

// What a model says of a name.
struct NameFacts {
    int boneNumber; // -1: no bone of that generation
    int controlNumber; // -1: no control of that generation
    BoneSet drives;
};

typedef std::vector<NameFacts> FactTable; // by name id

} // namespace

static void addRow(const FigureModel& model, int boneNumber, FactTable* facts)
{
    const QString row = QLatin1String(model.controlLinks[boneNumber]);
    for (int from = 1, dot = row.indexOf(QLatin1Char('.'), from); dot > 0;
         from = dot + 1, dot = row.indexOf(QLatin1Char('.'), from)) {
        const int id = nameId(row.mid(from, dot - from));
        Q_ASSERT_X(id >= 0, "figure_lookup", "a link row names an unknown control");
        (*facts)[id].drives.set(boneNumber);
    }
}

static FactTable buildFacts(const FigureModel& model)
{
    const NameFacts none = {-1, -1, BoneSet()};
    FactTable facts(kNameCount, none);
    for (int i = 0; i < model.controls.count; ++i)
        facts[controlId(model, i)].controlNumber = i;
    for (int i = 0; i < model.bones.count; ++i) {
        facts[boneId(model, i)].boneNumber = i;
        addRow(model, i, &facts);
    }
    return facts;
}

static std::vector<FactTable> buildAllFacts()
{
    std::vector<FactTable> tables;
    for (int kind = 0; kind < kFigureKindCount; ++kind)
        tables.push_back(buildFacts(modelFor(FigureKind(kind))));
    return tables;
}

static const FactTable& factsOf(const FigureModel& model)
{
    static const std::vector<FactTable> tables = buildAllFacts(); // by FigureKind
    return tables[size_t(model.kind)];
}

void buildFigureTables()
{
    factsOf(activeModel()); // numbers and links, and with them the index of names
    isFaceBone(QString()); // the answers of the name tests
}

int boneNumberOf(int nameId, const FigureModel& model)
{
    return nameId < 0 ? -1 : factsOf(model)[size_t(nameId)].boneNumber;
}

int controlNumberOf(int nameId, const FigureModel& model)
{
    return nameId < 0 ? -1 : factsOf(model)[size_t(nameId)].controlNumber;
}

int boneIndex(const QString& name, const FigureModel& model)
{
    return boneNumberOf(nameId(name), model);
}

const QString& boneName(int boneNumber, const FigureModel& model)
{
    return nameText(boneId(model, boneNumber));
}

DzBone* findBone(const QString& name, const DzNode* node)
{
    const DzSkeleton* skeleton = node ? node->getSkeleton() : nullptr;
    return skeleton ? skeleton->findBone(name) : nullptr;
}

DzBone* findBone(int boneNumber, const DzNode* node)
{
    return findBone(boneName(boneNumber, modelOf(node)), node);
}

int controlCount(const FigureModel& model)
{
    return model.controls.count;
}

int controlIndex(const QString& name, const FigureModel& model)
{
    return controlNumberOf(nameId(name), model);
}

const QString& controlName(int controlNumber, const FigureModel& model)
{
    return nameText(controlId(model, controlNumber));
}

bool isBodyControl(const QString& name, const FigureModel& model)
{
    return controlIndex(name, model) >= 0;
}

DzFloatProperty* findOwnControl(const QString& name, const DzNode* node)
{
    return node ? qobject_cast<DzFloatProperty*>(findExactProperty(node, name)) : nullptr;
}

DzFloatProperty* findControl(const QString& name, const DzNode* node)
{
    const DzSkeleton* skeleton = node ? node->getSkeleton() : nullptr;
    if (!skeleton)
        return nullptr;
    if (DzProperty* property = findExactProperty(skeleton, name))
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

const char* boneControlRow(int boneNumber, const FigureModel& model)
{
    return model.controlLinks[boneNumber];
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

bool controlDrivesBone(const QString& controlName, int boneNumber, const FigureModel& model)
{
    if (boneNumber < 0 || boneNumber >= model.bones.count)
        return false;
    const int id = nameId(controlName);
    if (id < 0)
        return rowContains(QLatin1String(boneControlRow(boneNumber, model)), controlName);
    return factsOf(model)[size_t(id)].drives.test(size_t(boneNumber));
}

const BoneSet& bonesDrivenBy(int controlNumber, const FigureModel& model)
{
    return factsOf(model)[size_t(controlId(model, controlNumber))].drives;
}

} // namespace quillon
