// figure_model.h - all that the tools know about a generation of figures, as constant tables: one
// row a generation. Nothing here is read from a figure, and nothing changes.
//
// A further generation is a row of kModels (figure_model.cpp), a FigureKind before None, and such
// lists as differ; what it shares with another one it names again. The functions that read a model
// ask for no generation. kNameCount (name_index.h) counts the distinct names of all rows,
// kControlCountMax (control_tables.h) is the longest list, and kBoneCount the most bones.
#pragma once

namespace quillon {

// The rows of the table, and None for what is no supported figure.
enum class FigureKind { Genesis8, Genesis8_1, None };
static constexpr int kFigureKindCount = int(FigureKind::None);

// Names of a table; begin() and end() for loops.
struct NameList {
    const char* const* names;
    int count;

    const char* const* begin() const
    {
        return names;
    }
    const char* const* end() const
    {
        return names + count;
    }
};

// What body_parts.h tests a name for. FirstExactTest and later: the name equals one of the list;
// before: it contains one.
enum NameTest {
    FaceBone,
    ExpressionControl,
    TorsoArmControl,
    LegControl,
    HipControl,
    FootPattern,
    ToeFootControl,
    FirstExactTest = ToeFootControl,
    LeftHandControl,
    RightHandControl,
    UpperBodyBone,
    LegBone,
    FootBone,
    LeftHandBone,
    RightHandBone,
    NameTestCount
};

// How a facial control tells its side, so that its partner's name can be made.
struct SideWords {
    const char* prefix; // of the controls that have sides
    const char* left;
    const char* right;
    bool atEnd; // the word is the name's end; otherwise it stands anywhere
};

struct CorrectivePair {
    const char* bone; // a pattern
    const char* controls[2];
};

// The local rotations whose product, from left to right, makes a slot of the pose signature; null
// behind the last.
static constexpr int kSignatureFactors = 4;
struct SignatureBones {
    const char* bones[kSignatureFactors];
};
static constexpr int kSignatureRows = 10;

struct FigureModel {
    FigureKind kind;
    NameList figureNames; // exact names of the figure nodes
    NameList bones; // by bone number
    NameList controls; // by control number
    const char* const* controlLinks; // by bone number: ".name.name."

    NameList tests[NameTestCount]; // by NameTest

    // Names that a mirrored pose exchanges and negates.
    NameList pairedLimbs; // before those of the face
    NameList pairedBiceps; // behind them
    NameList negatedFace;
    NameList negatedBody;
    SideWords faceSides;

    // What single tools take (part_tables.h).
    NameList translatableBones;
    NameList faceCorrectives;
    const CorrectivePair* bodyCorrectives;
    int bodyCorrectiveCount;
    bool hasFacsFace; // a reset of the face takes its "facs_" controls and morphs along
    const SignatureBones* signatureBones; // kSignatureRows, in the order of the slots
};

// kind: not None.
const FigureModel& modelFor(FigureKind kind);

} // namespace quillon
