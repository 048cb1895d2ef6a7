// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include "InstanceForm.h"

#include <Pegasus/Common/Exception.h>

#include <utility>

#include "CimText.h"
#include "ClassConversion.h"

namespace QZ {

using namespace Pegasus;

namespace {

// Adds the qualifiers that the object has not got from its provider.
template <class Object>
void _addQualifiers(const QualifierList& declared, Object& object) {
    for (const CIMQualifier& qualifier : declared) {
        if (object.findQualifier(qualifier.getName()) == PEG_NOT_FOUND) {
            object.addQualifier(qualifier.clone());
        }
    }
}

}  // namespace

bool namesProperty(const CIMPropertyList& list, const CIMName& name) {
    for (Uint32 i = 0; i < list.size(); ++i) {
        if (list[i].equal(name)) {
            return true;
        }
    }
    return false;
}

InstanceForm::InstanceForm(const ClassRepository& classes, Wishes wishes)
    : _classes(classes), _wishes(std::move(wishes)) {}

CIMInstance InstanceForm::prepared(const CIMInstance& instance) const {
    if (!_wishes.includeQualifiers && !_wishes.includeClassOrigin) {
        return instance;
    }
    const ClassDeclaration* const declared = _classes.find(nameText(instance.getClassName()));
    if (!declared) {
        return instance;
    }
    CIMInstance result = instance.clone();
    _addQualifiers(declared->qualifiers, result);
    for (Uint32 i = 0; i < result.getPropertyCount(); ++i) {
        CIMProperty property = result.getProperty(i);
        const PropertyDeclaration* const known = declared->find(nameText(property.getName()));
        if (!known) {
            continue;
        }
        property.setClassOrigin(CIMName(make_String(known->origin)));
        _addQualifiers(known->qualifiers, property);
    }
    return result;
}

bool InstanceForm::_selects(const ClassDeclaration* declared, const CIMName& property) const {
    if (!_wishes.properties.isNull() && !namesProperty(_wishes.properties, property)) {
        return false;
    }
    if (_wishes.shallow && !_wishes.shallow->find(nameText(property))) {
        return false;
    }
    if (_wishes.localOnly && declared) {
        const PropertyDeclaration* const known = declared->find(nameText(property));
        return !known || !known->isPropagated;
    }
    return true;
}

XmlForm InstanceForm::form(const CIMName& className) const {
    XmlForm form;
    form.includeQualifiers = _wishes.includeQualifiers;
    form.includeClassOrigin = _wishes.includeClassOrigin;
    if (!_wishes.properties.isNull() || _wishes.shallow || _wishes.localOnly) {
        form.selects = [this, declared = _classes.find(nameText(className))](
                           const CIMConstProperty& property) {
            return _selects(declared, property.getName());
        };
    }
    return form;
}

CIMInstance InstanceForm::selected(const CIMInstance& instance,
                                   const CIMNamespaceName& nameSpace) const {
    CIMInstance result = prepared(instance).clone();
    const XmlForm wanted = form(instance.getClassName());
    for (Uint32 i = result.getPropertyCount(); i != 0 && wanted.selects; --i) {
        if (!wanted.selects(result.getProperty(i - 1))) {
            result.removeProperty(i - 1);
        }
    }
    result.setPath(path(instance, nameSpace));
    return result;
}

CIMObjectPath InstanceForm::path(const CIMInstance& instance,
                                 const CIMNamespaceName& nameSpace) const {
    CIMObjectPath path = instance.getPath();
    if (path.getKeyBindings().size() == 0) {
        const ClassDeclaration* const declared = _classes.find(nameText(instance.getClassName()));
        if (!declared) {
            throw CIMException(CIM_ERR_FAILED,
                               make_String("the provider delivered an instance without keys of " +
                                           nameText(instance.getClassName()) +
                                           ", which is no class of the namespace"));
        }
        path = instance.buildPath(makeCimClass(*declared));
    }
    path.setNameSpace(nameSpace);
    return path;
}

}  // namespace QZ
