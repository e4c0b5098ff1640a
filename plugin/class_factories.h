// class_factories.h - through which the host and its scripts make the plug-in's three classes.
// A factory carries the class's meta-object and a GUID; instances belong to whoever asked for them.
// Owns: per class, the id of its pointer type and the factory that scripts use.
#pragma once

#include "dzclassfactory.h"

class DzQuillonPane;
class DzQuillonPaneAction;
class QScriptValue;
class QuillonAboutAction;
struct QMetaObject;

// T: one of the three, each of which has a constructor without arguments.
template <typename T> class QuillonClassFactory : public DzClassFactory {
public:
    explicit QuillonClassFactory(const char* guid);
    ~QuillonClassFactory() override;

    QObject* createInstance() const override;
    QObject* createInstance(const QVariantList& args) const override; // ignores the arguments

    // Makes "new <class>" work in scripts, and pointers to the class pass between both worlds.
    void registerClass(QScriptEngine* engine) const override;
};

// Sets every key of the class's own enumerations as a read-only number on the object. The real
// host's call for it is not known.
void setEnumKeys(const QMetaObject& meta, QScriptValue object);

typedef QuillonClassFactory<DzQuillonPane> DzQuillonPaneFactory;
typedef QuillonClassFactory<DzQuillonPaneAction> DzQuillonPaneActionFactory;
typedef QuillonClassFactory<QuillonAboutAction> QuillonAboutActionFactory;
