#include "dzfloatproperty.h"

#include "dzclock.h"
#include "dzcontroller.h"
#include "dzhostcalls.h"
#include "dznode.h"
#include "dzundostack.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

DzFloatProperty::DzFloatProperty(const QString& name, bool canAnimate, bool isUser, float def)
    : DzNumericProperty(name, canAnimate, isUser)
    , m_transformOf(nullptr)
    , m_cached(0)
    , m_cachedEpoch(0)
    , m_undoSerial(0)
{
    m_state.def = def;
    m_state.min = -std::numeric_limits<float>::max();
    m_state.max = std::numeric_limits<float>::max();
    m_state.sensitivity = 0.01f;
}

// ---- reading --------------------------------------------------------------------------------

static bool keyBefore(const DzFloatProperty::Key& key, DzTime t)
{
    return key.time < t;
}

// Slope of the curve through key i, per tick: that of its neighbours (Catmull-Rom with uneven
// spacing), of the one span at an end.
static double slopeAt(const std::vector<DzFloatProperty::Key>& keys, size_t i)
{
    const DzFloatProperty::Key& a = keys[i > 0 ? i - 1 : i];
    const DzFloatProperty::Key& b = keys[i + 1 < keys.size() ? i + 1 : i];
    return (double(b.value) - a.value) / (double(b.time) - a.time);
}

static double interpolated(const std::vector<DzFloatProperty::Key>& keys, size_t i, DzTime t)
{
    const DzFloatProperty::Key &a = keys[i - 1], &b = keys[i];
    const double span = double(b.time) - a.time;
    const double u = (double(t) - a.time) / span;
    switch (a.interpolation) {
    case DzFloatProperty::Constant:
        return a.value;
    case DzFloatProperty::Linear:
        return a.value + (double(b.value) - a.value) * u;
    case DzFloatProperty::Spline:
        break;
    }
    const double m0 = slopeAt(keys, i - 1) * span, m1 = slopeAt(keys, i) * span;
    const double u2 = u * u, u3 = u2 * u; // cubic Hermite basis
    return (2 * u3 - 3 * u2 + 1) * a.value + (u3 - 2 * u2 + u) * m0 + (3 * u2 - 2 * u3) * b.value
        + (u3 - u2) * m1;
}

float DzFloatProperty::getRawValue(DzTime t) const
{
    const std::vector<Key>& keys = m_state.keys;
    if (keys.empty())
        return m_state.def;
    if (keys.size() == 1 || t <= keys.front().time)
        return keys.front().value;
    if (t >= keys.back().time)
        return keys.back().value;
    const auto next = std::lower_bound(keys.begin(), keys.end(), t, keyBefore);
    if (next->time == t)
        return next->value;
    return float(interpolated(keys, size_t(next - keys.begin()), t));
}

float DzFloatProperty::getRawValue() const
{
    return getRawValue(g_sceneTime);
}

double DzFloatProperty::chainValue(DzTime t, bool defaults) const
{
    double v = defaults ? m_state.def : getRawValue(t);
    if (!m_state.overriding)
        for (const DzController* c : m_controllers)
            if (const DzNumericController* numeric = c->numeric())
                v = numeric->apply(v, t, defaults);
    return v;
}

float DzFloatProperty::clampValue(double v) const
{
    const float f = float(v);
    return m_state.clamped ? std::max(m_state.min, std::min(m_state.max, f)) : f;
}

float DzFloatProperty::getValue() const
{
    if (m_cachedEpoch != g_valueEpoch) {
        m_cached = clampValue(
            m_controllers.isEmpty() ? getRawValue(g_sceneTime) : chainValue(g_sceneTime, false));
        m_cachedEpoch = g_valueEpoch;
    }
    return m_cached;
}

float DzFloatProperty::getValue(DzTime t) const
{
    return t == g_sceneTime ? getValue() : clampValue(chainValue(t, false));
}

float DzFloatProperty::getDefaultedValue() const
{
    return clampValue(chainValue(0, true));
}

// ---- writing --------------------------------------------------------------------------------

void DzFloatProperty::remember()
{
    if (dzUndoStack && isInScene())
        dzUndoStack->recordProperty(this);
}

bool DzFloatProperty::writeKey(DzTime t, float raw, Interpolation interpolation)
{
    if (!canAnimate()) {
        if (raw == m_state.def)
            return false;
        remember();
        m_state.def = raw;
        valueDidChange();
        return true;
    }
    std::vector<Key>& keys = m_state.keys;
    auto at = std::lower_bound(keys.begin(), keys.end(), t, keyBefore);
    const bool exists = at != keys.end() && at->time == t;
    if (exists && at->value == raw && at->interpolation == interpolation)
        return false;
    remember();
    const Key key = {t, raw, interpolation};
    if (exists)
        *at = key;
    else
        keys.insert(at, key);
    valueDidChange();
    if (!exists)
        emit keysChanged();
    return true;
}

static DzFloatProperty::Interpolation interpolationAt(
    const std::vector<DzFloatProperty::Key>& keys, DzTime t)
{
    const auto at = std::lower_bound(keys.begin(), keys.end(), t, keyBefore);
    return at != keys.end() && at->time == t ? at->interpolation : DzFloatProperty::Spline;
}

void DzFloatProperty::setValue(DzTime t, float value, Interpolation interpolation)
{
    if (DZ_HOST_CALL("setValue") || m_state.locked || !std::isfinite(value))
        return;
    if (m_controllers.isEmpty() || m_state.overriding) {
        writeKey(t, value, interpolation);
        return;
    }
    double raw = value;
    if (float(chainValue(t, false)) == value)
        raw = getRawValue(t); // exact where the way back would round
    else
        for (int i = m_controllers.size() - 1; i >= 0; --i)
            if (const DzNumericController* numeric = m_controllers.at(i)->numeric())
                if (!numeric->invert(raw, t, &raw))
                    return; // no raw value leads there
    if (std::isfinite(float(raw)))
        writeKey(t, float(raw), interpolation);
}

void DzFloatProperty::setValue(DzTime t, float value)
{
    setValue(t, value, interpolationAt(m_state.keys, t));
}

void DzFloatProperty::setValue(float value)
{
    setValue(g_sceneTime, value);
}

void DzFloatProperty::setRawValue(DzTime t, float raw)
{
    if (!DZ_HOST_CALL("setRawValue") && !m_state.locked && std::isfinite(raw))
        writeKey(t, raw, interpolationAt(m_state.keys, t));
}

void DzFloatProperty::setRawValue(float raw)
{
    setRawValue(g_sceneTime, raw);
}

void DzFloatProperty::setKeyValue(int i, float raw)
{
    if (i >= 0 && i < getNumKeys() && !m_state.locked && std::isfinite(raw))
        writeKey(getKeyTime(i), raw, m_state.keys[size_t(i)].interpolation);
}

// ---- limits, default, step --------------------------------------------------------------------

float DzFloatProperty::getMin() const
{
    return m_state.min;
}

float DzFloatProperty::getMax() const
{
    return m_state.max;
}

void DzFloatProperty::setMin(float minimum)
{
    setMinMax(minimum, m_state.max);
}

void DzFloatProperty::setMax(float maximum)
{
    setMinMax(m_state.min, maximum);
}

void DzFloatProperty::setMinMax(float minimum, float maximum)
{
    if (minimum == m_state.min && maximum == m_state.max)
        return;
    remember();
    m_state.min = minimum;
    m_state.max = maximum;
    valueDidChange();
    emit minMaxChanged();
}

float DzFloatProperty::getDefaultValue() const
{
    return m_state.def;
}

void DzFloatProperty::setDefaultValue(float def)
{
    if (def == m_state.def)
        return;
    remember();
    m_state.def = def;
    valueDidChange();
}

float DzFloatProperty::getSensitivity() const
{
    return m_state.sensitivity;
}

void DzFloatProperty::setSensitivity(float step)
{
    if (DZ_HOST_CALL("setSensitivity") || step == m_state.sensitivity)
        return;
    remember();
    m_state.sensitivity = step;
    noteSceneChange();
}

bool DzFloatProperty::isClamped() const
{
    return m_state.clamped;
}

void DzFloatProperty::setIsClamped(bool onOff)
{
    if (DZ_HOST_CALL("setIsClamped") || onOff == m_state.clamped)
        return;
    remember();
    m_state.clamped = onOff;
    valueDidChange();
    emit clampStateChanged(onOff);
}

bool DzFloatProperty::isLocked() const
{
    return m_state.locked;
}

void DzFloatProperty::lock(bool onOff)
{
    if (DZ_HOST_CALL("lock") || onOff == m_state.locked)
        return;
    remember();
    m_state.locked = onOff;
    noteSceneChange();
    emit lockStateChanged(onOff);
}

bool DzFloatProperty::setOverrideControllers(bool onOff)
{
    const bool before = m_state.overriding;
    if (onOff != before) {
        remember();
        m_state.overriding = onOff;
        valueDidChange();
    }
    return before;
}

bool DzFloatProperty::isOverridingControllers() const
{
    return m_state.overriding;
}

// ---- keys -----------------------------------------------------------------------------------

bool DzFloatProperty::hasKeys() const
{
    return !m_state.keys.empty();
}

int DzFloatProperty::getNumKeys() const
{
    return int(m_state.keys.size());
}

int DzFloatProperty::getNumKeys(const DzTimeRange& range) const
{
    int n = 0;
    for (const Key& key : m_state.keys)
        n += range.isIncluded(key.time);
    return n;
}

DzTime DzFloatProperty::getKeyTime(int i) const
{
    return i >= 0 && i < getNumKeys() ? m_state.keys[size_t(i)].time : 0;
}

float DzFloatProperty::getKeyValue(int i) const
{
    return i >= 0 && i < getNumKeys() ? m_state.keys[size_t(i)].value : 0;
}

DzTimeRange DzFloatProperty::getKeyRange() const
{
    return m_state.keys.empty() ? DzTimeRange()
                                : DzTimeRange(m_state.keys.front().time, m_state.keys.back().time);
}

void DzFloatProperty::deleteKeys(const DzTimeRange& range)
{
    if (DZ_HOST_CALL("deleteKeys") || m_state.locked || getNumKeys(range) == 0)
        return;
    remember();
    std::vector<Key>& keys = m_state.keys;
    keys.erase(std::remove_if(keys.begin(), keys.end(),
                   [&range](const Key& key) { return range.isIncluded(key.time); }),
        keys.end());
    valueDidChange();
    emit keysChanged();
}

void DzFloatProperty::deleteAllKeys()
{
    deleteKeys(DzTimeRange(std::numeric_limits<DzTime>::min(), std::numeric_limits<DzTime>::max()));
}

// ---- double-valued view ---------------------------------------------------------------------

double DzFloatProperty::getDoubleValue() const
{
    return getValue();
}

double DzFloatProperty::getDoubleValue(DzTime t) const
{
    return getValue(t);
}

void DzFloatProperty::setDoubleValue(double value)
{
    setDoubleValue(g_sceneTime, value);
}

void DzFloatProperty::setDoubleValue(DzTime t, double value)
{
    if (!DZ_HOST_CALL("setDoubleValue"))
        setValue(t, float(value));
}

double DzFloatProperty::getDoubleDefaultValue() const
{
    return m_state.def;
}

// ---- change ---------------------------------------------------------------------------------

// A valid cache implies valid caches of all drivers, so where this one is already dropped
// everything downstream is dropped, too.
void DzFloatProperty::valueDidChange()
{
    const bool downstreamValid = m_cachedEpoch == g_valueEpoch;
    m_cachedEpoch = 0;
    noteSceneChange();
    if (downstreamValid)
        for (DzController* link : std::as_const(m_driven))
            link->ownerChanged();
    if (m_transformOf)
        m_transformOf->invalidateTransform();
    emit currentValueChanged();
    emit valueChanged();
}

void DzFloatProperty::exchangeState(State* other)
{
    std::swap(m_state, *other);
    valueDidChange();
    if (m_state.locked != other->locked)
        emit lockStateChanged(m_state.locked);
    if (m_state.clamped != other->clamped)
        emit clampStateChanged(m_state.clamped);
    if (m_state.keys.size() != other->keys.size())
        emit keysChanged();
    if (m_state.min != other->min || m_state.max != other->max)
        emit minMaxChanged();
}
