"""test_host_calls.py - what host_calls.py has to refuse, for test_qt48_uses.py, which reads it with its
own lines in one go.
"""
import os
import re
import subprocess

HERE = os.path.dirname(os.path.abspath(__file__))
NAME = "ground/asks.cpp"
BEFORE = """#include "dzapp.h"
#include "dzaction.h"
#include "dznode.h"
#include "dzprogress.h"
#include "dzscene.h"
#include "dzskeleton.h"
"""
REFUSED = """#include "dzdialog.h"
bool remove(DzNode* node) { return dzScene->removeNode(node); }
bool ends(const DzProgress& progress) { return progress.isCancelled(); }
void place(DzNode* node) { node->setOrigin(DzVec3(), true); }
struct Action : DzAction { using DzAction::DzAction; QString getActionGroup() const override { return QString(); } };
void follow(QObject* object) { QObject::connect(dzScene, SIGNAL(sceneCleared()), object, SLOT(deleteLater())); }
void restart(QObject* object) { QObject::connect(object, SIGNAL(destroyed()), dzScene, SLOT(clear())); }
DzBone* named(const DzSkeleton* skeleton, const QString& label) { return skeleton->findBoneByLabel(label); }
bool (DzScene::*const kRemove)(DzNode*) = &DzScene::removeNode;
"""
ACCEPTED = """DzTime now() { return dzScene ? dzScene->getTime() : 0; }
bool has(const DzNode* node) { return node->getObject() && node->isRootNode(); }
struct Other : DzAction { using DzAction::DzAction; void executeAction() override { } };
DzBone* hip(const DzSkeleton* skeleton) { return skeleton->findBone(QLatin1String("hip")); }
"""


def write(work):
    with open(os.path.join(work, NAME), "w") as out:
        out.write(BEFORE + REFUSED + ACCEPTED)
    return os.path.join(work, NAME)


def flaws(work):
    """What it refuses or accepts wrongly, as texts."""
    command = [os.path.join(HERE, "host_calls.py"), work, os.path.join(work, "build")]
    told = subprocess.run(command, stderr=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    lines = {int(n) for n in re.findall(rf"^{NAME}:(\d+):", told.stderr, re.M)}
    first = BEFORE.count("\n") + 1
    wanted = set(range(first, first + REFUSED.count("\n")))
    text = (BEFORE + REFUSED + ACCEPTED).split("\n")
    found = [("accepted: " if n in wanted else "refused: ") + text[n - 1] for n in sorted(wanted ^ lines)]
    for say in ("docs/developer/host_calls.md is not as", "host_calls.tsv: nothing uses DzGzIO\n"):
        if say not in told.stderr:
            found.append("not told: " + say)
    if told.returncode != 1:
        found.append(f"ended with {told.returncode}")
    return found + ([told.stderr] if found else [])
