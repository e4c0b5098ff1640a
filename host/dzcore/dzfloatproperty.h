// dzfloatproperty.h - the number behind every channel, control and slider.
//
// Value chain: raw (the keys, interpolated between, constant outside; the default value without
// keys) -> each controller in order -> clamp to [min, max] when clamped. getValue gives the end of
// the chain, getRawValue its start. setValue works backwards: it stores the raw value that makes
// the end of the chain, before the clamp, read the given number. Nothing is clamped in storage.
//
// Writing a value places a key at its time (a property that cannot animate changes its default
// value instead). A locked property ignores every write of a value or key.
// Units: degrees, centimetres or plain fractions, as the property says; times in ticks.
#pragma once

#include "dznumericproperty.h"

#include <vector>

class DzNode;

class DZCORE_EXPORT DzFloatProperty : public DzNumericProperty {
    Q_OBJECT
public:
    enum Interpolation { Constant = 0, Linear, Spline }; // from a key to the next one

    explicit DzFloatProperty(
        const QString& name, bool canAnimate = true, bool isUser = false, float def = 0);

    float getValue() const; // at the scene's current time
    float getValue(DzTime) const;
    float getRawValue() const;
    float getRawValue(DzTime) const;
    float getDefaultedValue() const; // the chain with every property at its default

    void setValue(float);
    void setValue(DzTime, float);
    void setValue(DzTime, float, Interpolation);
    void setRawValue(float);
    void setRawValue(DzTime, float);

    float getMin() const;
    float getMax() const;
    void setMin(float);
    void setMax(float);
    void setMinMax(float minimum, float maximum);
    float getDefaultValue() const;
    void setDefaultValue(float);
    float getSensitivity() const; // step of sliders and nudges, > 0
    void setSensitivity(float);
    float getKeyValue(int i) const; // 0 outside 0..n-1
    void setKeyValue(int i, float);

    bool isLocked() const override;
    void lock(bool onOff = true) override;
    bool hasKeys() const override;
    int getNumKeys() const override;
    int getNumKeys(const DzTimeRange&) const override;
    DzTime getKeyTime(int i) const override;
    DzTimeRange getKeyRange() const override;
    void deleteKeys(const DzTimeRange&) override;
    void deleteAllKeys() override;
    bool setOverrideControllers(bool) override; // the state before
    bool isOverridingControllers() const override;
    bool isClamped() const override;
    void setIsClamped(bool) override;
    double getDoubleValue() const override;
    double getDoubleValue(DzTime) const override;
    void setDoubleValue(double) override;
    void setDoubleValue(DzTime, double) override;
    double getDoubleDefaultValue() const override;

    // One key: time in ticks, raw value, how the span after it is filled.
    struct Key {
        DzTime time;
        float value;
        Interpolation interpolation;
    };

    // Everything an undo step has to bring back.
    struct State {
        std::vector<Key> keys; // ascending times
        float def = 0, min = 0, max = 0, sensitivity = 0;
        bool locked = false, clamped = false, overriding = false;
    };

signals:
    void valueChanged();
    void clampStateChanged(bool clamped);
    void minMaxChanged();
    void keysChanged();

protected:
    void valueDidChange() override;

private:
    friend class DzUndoStack;
    friend class DzNode;
    friend class DzERCLink;

    double chainValue(DzTime, bool defaults) const; // before the clamp
    float clampValue(double) const;
    bool writeKey(DzTime, float raw, Interpolation);
    void remember(); // tells the undo stack the state before a change
    void exchangeState(State*);

    State m_state;
    DzNode* m_transformOf; // the node whose transform this channel is part of, or null
    mutable float m_cached;
    mutable unsigned m_cachedEpoch; // valid while equal to the scene's epoch
    unsigned m_undoSerial; // hold in which the state before was remembered
};
