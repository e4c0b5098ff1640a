#!/bin/bash
# self_test.sh WORK - shows that each check refuses what it is for, and nothing else: every row
# makes a small source tree in WORK with one line in one file, and says what the check must answer.
# An "@" in a line is taken out, so that rows of the wording check do not offend it themselves.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$1
rows=0
failures=0

# The tree that every row starts from; all checks accept it.
fresh_tree() {
    rm -rf "$work"
    mkdir -p "$work"/{plugin,pane,services,finder,posefile,figure,ground,art,catalogue,tests/e2e,tests/reference}
    mkdir -p "$work"/host/{dzcore,figures,body,posebench,driver}
    printf '// dznode.h - a thing with a place.\n#pragma once\n' >"$work/host/dzcore/dznode.h"
    printf '// dzhostcalls.h - a hook.\n// Not part of the interface.\n#pragma once\n' \
        >"$work/host/dzcore/dzhostcalls.h"
    for header in figure/quat pane/page_state pane/dzquillonpane finder/pose_index art/atlas_table; do
        printf '// %s.h - a subject.\n#pragma once\n' "${header##*/}" >"$work/$header.h"
    done
    printf '#include "figure/quat.h"\n' >"$work/figure/quat.cpp"
}

# answer CHECK: the check's exit code and output for the tree.
answer() {
    local status=0
    output=$("$here/check_$1.sh" "$work" 2>&1) || status=$?
    return $status
}

report() {
    failures=$((failures + 1))
    printf 'FAILED: %s\n%s\n' "$1" "$output" >&2
}

# refuses CHECK FILE LINE: the check fails and names the file and the line's number.
refuses() {
    rows=$((rows + 1))
    fresh_tree
    printf '%b\n' "${3//@/}" >>"$work/$2"
    local number
    number=$(wc -l <"$work/$2")
    if answer "$1"; then
        report "$1 accepts in $2: $3"
    elif ! grep -qE "^$2:[1-9][0-9]*" <<<"$output"; then
        report "$1 refuses without naming $2 (line $number): $3"
    fi
}

# accepts CHECK FILE LINE
accepts() {
    rows=$((rows + 1))
    fresh_tree
    printf '%b\n' "${3//@/}" >>"$work/$2"
    answer "$1" || report "$1 refuses in $2: $3"
}

for check in qt_names includes headers wording format; do
    rows=$((rows + 1))
    fresh_tree
    answer $check || report "$check refuses the plain tree"
    rm -rf "$work"
    mkdir -p "$work"
    rows=$((rows + 1))
    if answer $check; then report "$check accepts an empty folder, where it checks nothing"; fi
done

# ---- names that Qt 4.8 or 5.15 lacks
while IFS= read -r line; do
    refuses qt_names pane/hover.cpp "$line"
done <<'ROWS'
QString a = QStringLiteral("x");
QRegularExpression expression("x");
QJsonObject object;
#include <QJsonDocument>
#include <QtGui/QPainter>
QString path = QStandardPaths::writableLocation(where);
for (const QString& s : qAsConst(list))
auto it = list.cbegin();
Q_ENUM(Kind)
double r = qDegreesToRadians(a);
QPointF p = event->localPos();
int steps = event->angleDelta().y();
QPixmap shot = widget->grab();
QTRY_VERIFY(done);
QThread::msleep(5);
QStringList names{"a", "b"};
return QList<int> { 1, 2 };
QList<int> numbers = {
int width = metrics.horizontalAdvance(text);
QString s = html.toHtmlEscaped();
list = text.split(',', QString::SkipEmptyParts);
if (event->button() == Qt::MidButton)
qSort(list);
qCDebug(area) << 1;
connect(button, &QPushButton::clicked, this, &Pane::press);
connect(button, SIGNAL(clicked()), this,\n    [this]() { press(); });
connect(&m_timer, &QTimer::timeout, this,\n    SLOT(tick()));
QTimer::singleShot(0, this, [this] { tick(); });
#if QT_VERSION >= 0x050000
QVector<int> stack; stack.takeLast();
QAtomicInt count; int n = count.load();
int n = text.midRef(2, 3).toInt();
QByteArray d = QCryptographicHash::hash(b, QCryptographicHash::Sha256);
const char* t = "//"; QJsonArray array;
const float near = 0.1f;
ROWS
refuses qt_names host/dzcore/dznode.cpp 'QJsonObject object;'
refuses qt_names host/figures/figure_data.cpp 'QJsonObject object;'
refuses qt_names pane/hover.h '// hover.h - x\n    Q_OBJECT\n    enum class Kind { A };'
refuses qt_names pane/hover.h '// hover.h - x\n    Q_OBJECT\nnamespace a::b {'
refuses qt_names pane/hover.h "// hover.h - x\n    Q_OBJECT\nint n = 1'000;"
while IFS= read -r line; do
    accepts qt_names pane/hover.cpp "$line"
done <<'ROWS'
// QStringLiteral and QJsonObject are absent in 4.8
/* QRegularExpression\n   is absent, too */ int x = 0;
const char* text = "QStringLiteral(\"x\") // qAsConst";
const char* raw = R"(QJsonObject "x" \n qAsConst)";
connect(&m_timer, SIGNAL(timeout()), this, SLOT(tick()));
bool ok = QObject::connect(a, SIGNAL(x()), b, SLOT(y()))\n    && QObject::connect(c, SIGNAL(x()), b, SLOT(y()));
bool ok = connect(m_buttons[i], SIGNAL(clicked()),\n    this, SLOT(press()));
std::sort(list.begin(), list.end(), [](int a, int b) { return a < b; });
QStringList names = QStringList() << "a";
QStringList names() const {
QList<int> stack; stack.takeLast();
int big = 1'000'000; char c = '"'; int y = 2;
QPixmap icon; icon.load(path);
QVector<int> v; v.resize(3); v.remove(0);
enum class Kind { A, B };
ROWS
accepts qt_names host/driver/main.cpp 'QJsonObject object; connect(a, &A::b, c, &C::d);'
accepts qt_names catalogue/main.cpp 'QJsonObject object;'
accepts qt_names tests/e2e/test_x.cpp 'QStringLiteral("x");'
while IFS= read -r line; do
    refuses qt_names tests/test_x.cpp "$line"
done <<'ROWS'
QString s = QStringLiteral("x");
QObject::connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
QTimer::singleShot(0, dialog, [this] { answer(); });
QTEST_GUILESS_MAIN(TestX)
QSKIP("not as root");
void TestX::rows_data()\n{\n    QSKIP("not as root", SkipAll);\n}
QVERIFY(QTest::qWaitForWindowExposed(&dialog));
QVERIFY(QTest::qWaitForWindowActive(dialog));
const QString dead = QString::number(ended->processId());
const QStringList kept = {"a", "b"};
for (const int n : std::as_const(list))
DzPaneGroup* small = newGroup(100, 100);
QCOMPARE(spy.at(0).at(0).value<DzPaneGroup*>(), group);
const QScriptValue parse = engine.globalObject();\nparse.call(QScriptValue(), arguments);
const float cm = edit->text().toUtf8().toFloat(&ok);
ROWS
while IFS= read -r line; do
    accepts qt_names tests/test_x.cpp "$line"
done <<'ROWS'
QSKIP("not as root", SkipAll);
Q_DECLARE_METATYPE(DzPaneGroup*)\nQCOMPARE(spy.at(0).at(0).value<DzPaneGroup*>(), group);
QScriptValue parse = engine.globalObject();\nparse.call(QScriptValue(), arguments);
void TestX::rows_data()\n{\n    QTest::newRow("x");\n}\n\nvoid TestX::rows()\n{\n    QSKIP("no", SkipAll);\n}
#include <utility>\nfor (const int n : std::as_const(list))
ROWS
accepts qt_names tests/qt_test_compat.h '// qt_test_compat.h - x\n#pragma once\n#if QT_VERSION >= 0x050000'
accepts qt_names tests/reference/raster_reference.cpp 'QStringLiteral("x");'
accepts qt_names ground/qt_compat.h '// qt_compat.h - x\n#pragma once\n#if QT_VERSION >= 0x050000'

# ---- includes upwards
refuses includes figure/quat.cpp '#include "pane/dzquillonpane.h"'
refuses includes figure/quat.cpp '#include "finder/pose_index.h"'
refuses includes finder/pose_index.cpp '#include "pane/dzquillonpane.h"'
refuses includes pane/hover.cpp '#include "plugin/plugin_definition.h"'
refuses includes ground/data_folder.cpp '#include "pane/dzquillonpane.h"'
refuses includes ground/data_folder.cpp '#include "figure/quat.h"'
refuses includes finder/pose_index.cpp '#include "art/atlas_table.h"'
refuses includes pane/hover.cpp '#include "host/dzcore/dznode.h"'
refuses includes pane/hover.cpp '#include "dzhostcalls.h"'
refuses includes pane/hover.cpp '#include "page_state.h"'
refuses includes pane/hover.cpp '#include "../figure/quat.h"'
refuses includes pane/hover.cpp '#include "tests/unit/nearly.h"'
refuses includes host/dzcore/dznode.cpp '#include "figure/quat.h"'
refuses includes host/dzcore/dznode.cpp '#include "host/posebench/window.h"'
refuses includes host/body/raster.cpp '#include "host/posebench/window.h"'
refuses includes host/posebench/window.cpp '#include "host/driver/script_engine.h"'
refuses includes host/posebench/window.cpp '#include "camera.h"'
refuses includes host/driver/main.cpp '#include "pane/page_state.h"'
refuses includes host/driver/main.cpp '#include "catalogue/picture_store.h"'
refuses includes finder/scan.cpp '#include "catalogue/picture_store.h"'
refuses includes catalogue/main.cpp '#include "pane/page_state.h"'
refuses includes catalogue/main.cpp '#include "services/notice.h"'
refuses includes catalogue/main.cpp '#include "host/posebench/window.h"'
refuses includes catalogue/main.cpp '#include "host/driver/script_engine.h"'
refuses includes catalogue/main.cpp '#include "picture_store.h"'
refuses includes figure/quat.cpp '#include "pane/page_state.h"'
accepts includes figure/quat.cpp '#include "ground/data_folder.h"'
accepts includes figure/quat.cpp '#include "dznode.h"'
accepts includes pane/page_state.cpp '#include "pane/dzquillonpane.h"'
accepts includes pane/hover.cpp '#include "finder/pose_index.h"'
accepts includes pane/hover.cpp '#include "art/atlas_table.h"'
accepts includes plugin/plugin_definition.cpp '#include "pane/dzquillonpane.h"'
accepts includes plugin/plugin_definition.cpp '#include "plugin_definition.moc"'
accepts includes host/driver/main.cpp '#include "dzhostcalls.h"'
accepts includes catalogue/main.cpp '#include "finder/pose_index.h"'
accepts includes catalogue/main.cpp '#include "host/body/pose_picture.h"'
accepts includes catalogue/main.cpp '#include "host/driver/utf8_locale.h"'
accepts includes catalogue/main.cpp '#include "dzscene.h"'
accepts includes host/driver/main.cpp '#include "host/figures/figure_data.h"'
accepts includes tests/test_x.cpp '#include "host/driver/command_line.h"'

# ---- headers that cannot be read alone
refuses headers pane/hover.h '#pragma once\nint x();'
refuses headers pane/hover.h '// hover.h - what the pointer is over.\n#include <QPoint>\nint x();'
refuses headers pane/hover.h '// hovers.h - what the pointer is over.\n#pragma once'
refuses headers pane/dzquillonpane.cpp '#include <QPainter>\n#include "pane/dzquillonpane.h"'
refuses headers pane/dzquillonpane.cpp 'int x;'
accepts headers pane/dzquillonpane.cpp '#include "pane/dzquillonpane.h"'
accepts headers host/dzcore/dznode.cpp '#include "dznode.h"'
accepts headers pane/main.cpp '#include <QPoint>'
accepts headers pane/tool_list.h '// tool_list.h - one row a tool.\nTOOL(Rotate, "Rotate")'

# ---- references to papers outside
refuses wording README.md 'as the speci@fication says'
refuses wording README.md 'What the sp@ec asks for'
refuses wording figure/quat.cpp '// see P@art 2.4'
refuses wording figure/quat.cpp '// P@arts 1.1 to 1.3'
refuses wording README.md 'closes iss@ue #12'
refuses wording tests/run.js '// files in /w@ork/shared'
refuses wording README.md 'listed in host-a@pi.md'
accepts wording README.md 'Special parts 2 and 3; a network at the work place; style of design'

# ---- format
refuses format pane/hover.cpp 'int  x=1 ;'
accepts format pane/hover.cpp 'int x = 1;'

if [ $failures -gt 0 ]; then
    echo "$failures of $rows rows failed" >&2
    exit 1
fi
rm -rf "$work"
echo "all $rows rows hold"
