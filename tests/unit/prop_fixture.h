// prop_fixture.h - a box prop in a scene with a window, and an answer to the rotation-order dialog.
#pragma once

#include "frame_fixture.h"
#include "qt_test_compat.h"
#include "scene_fixture.h"

#include "ground/plugin_settings.h"
#include "host/figures/prop_maker.h"

#include "dzfloatproperty.h"
#include "dznode.h"

#include <QDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QtTest>

#include <cmath>
#include <functional>

namespace quillon {

struct PropFixture : SceneFixture {
    PropFixture()
        : prop(makeProp(QLatin1String("crate"), DzVec3(-10, 0, -20), DzVec3(30, 50, 40)))
    {
        pluginSettings() = PluginSettings();
        scene.setAnimRange(DzTimeRange(0, 30 * kStep));
        scene.addNode(prop);
        undoStack.clearAll();
    }
    // Puts a key into each of the frames, in the X translation or in all six channels.
    void keyFrames(std::initializer_list<int> frames)
    {
        for (int frame : frames)
            prop->getXPosControl()->setValue(frame * kStep, float(frame));
    }
    void poseAt(DzTime time, Random* random)
    {
        for (DzFloatProperty* channel :
            {prop->getXRotControl(), prop->getYRotControl(), prop->getZRotControl(),
                prop->getXPosControl(), prop->getYPosControl(), prop->getZPosControl()})
            channel->setValue(time, float(random->between(-170, 170)));
    }

    static const DzTime kStep = 160;
    DzNode* prop;
};

inline std::vector<DzFloatProperty*> poseChannels(const DzNode* node)
{
    return {node->getXRotControl(), node->getYRotControl(), node->getZRotControl(),
        node->getXPosControl(), node->getYPosControl(), node->getZPosControl()};
}

// Every key of the node: "XTranslate 160 1.5".
inline QStringList keysOf(const DzNode* node)
{
    QStringList keys;
    for (int i = 0; i < node->getNumProperties(); ++i) {
        const auto* p = qobject_cast<DzFloatProperty*>(node->getProperty(i));
        for (int k = 0; p && k < p->getNumKeys(); ++k)
            keys += QString("%1 %2 %3")
                        .arg(p->getName())
                        .arg(p->getKeyTime(k))
                        .arg(double(p->getKeyValue(k)));
    }
    return keys;
}

// The corners of the fixture's box, in double: the node's placement is applied here and not by the
// node's own box.
inline std::vector<DzVec3> cornersAt(const DzNode* node, DzTime time)
{
    const DzVec3 low(-10, 0, -20), high(30, 50, 40), origin = node->getOrigin();
    DzMatrix3 turn;
    node->getWSRot(time).getMatrix(turn);
    const DzMatrix3 scale = node->getWSScale(time);
    const DzVec3 place = node->getWSPos(time);
    std::vector<DzVec3> corners;
    for (int corner = 0; corner < 8; ++corner) {
        double v[3], scaled[3] = {0, 0, 0}, turned[3] = {0, 0, 0};
        for (int i = 0; i < 3; ++i)
            v[i] = double(corner >> i & 1 ? high[i] : low[i]) - double(origin[i]);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                scaled[j] += v[i] * double(scale[i][j]);
        for (int i = 0; i < 3; ++i)
            for (int j = 0; j < 3; ++j)
                turned[j] += scaled[i] * double(turn[i][j]);
        corners.push_back(DzVec3(float(turned[0] + double(place[0])),
            float(turned[1] + double(place[1])), float(turned[2] + double(place[2]))));
    }
    return corners;
}

inline double furthestMoveCm(const std::vector<DzVec3>& before, const std::vector<DzVec3>& after)
{
    double furthest = 0;
    for (size_t i = 0; i < before.size(); ++i)
        furthest = std::max(furthest, distance(before[i], after[i]));
    return furthest;
}

// While it lives, every dialog that shows is handed to the function, from the event loop.
class DialogAnswer : public QObject {
public:
    explicit DialogAnswer(std::function<void(QDialog*)> answer)
        : m_answer(answer)
    {
        qApp->installEventFilter(this);
    }
    int shown = 0;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        QDialog* dialog = qobject_cast<QDialog*>(watched);
        if (dialog && event->type() == QEvent::Show) {
            ++shown;
            atNextTurn(dialog, [this, dialog] { m_answer(dialog); });
        }
        return false;
    }

private:
    std::function<void(QDialog*)> m_answer;
};

inline QRadioButton* radioButton(const QDialog* dialog, const char* label)
{
    const QList<QRadioButton*> all = dialog->findChildren<QRadioButton*>();
    for (QRadioButton* each : all)
        if (each->text() == QLatin1String(label))
            return each;
    return nullptr;
}

inline QPushButton* pushButton(const QDialog* dialog, const char* label)
{
    const QList<QPushButton*> all = dialog->findChildren<QPushButton*>();
    for (QPushButton* each : all)
        if (each->text().remove(QLatin1Char('&')) == QLatin1String(label))
            return each;
    return nullptr;
}

} // namespace quillon
