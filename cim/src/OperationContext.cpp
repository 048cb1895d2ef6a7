// SPDX-FileCopyrightText: 2026 the tavqz authors
// SPDX-License-Identifier: MIT
#include <Pegasus/Common/OperationContext.h>

#include <utility>

namespace Pegasus {

OperationContext::Container::~Container() = default;

OperationContext::OperationContext(const OperationContext& context) {
    _containers.reserve(context._containers.size());
    for (const _ContainerPtr& container : context._containers)
        _containers.emplace_back(container->clone());
}

OperationContext& OperationContext::operator=(const OperationContext& context) {
    OperationContext copy(context);
    _containers.swap(copy._containers);
    return *this;
}

OperationContext::~OperationContext() = default;

void OperationContext::clear() {
    _containers.clear();
}

// The number of containers where there is none of that name.
std::size_t OperationContext::_find(const String& containerName) const {
    std::size_t position = 0;
    while (position < _containers.size() && _containers[position]->getName() != containerName)
        ++position;
    return position;
}

std::size_t OperationContext::_findOrThrow(const String& containerName) const {
    const std::size_t position = _find(containerName);
    if (position == _containers.size())
        throw Exception(String("the operation context has no ") + containerName);
    return position;
}

const OperationContext::Container& OperationContext::get(const String& containerName) const {
    return *_containers[_findOrThrow(containerName)];
}

Boolean OperationContext::contains(const String& containerName) const {
    return _find(containerName) < _containers.size();
}

void OperationContext::set(const Container& container) {
    _ContainerPtr& place = _containers[_findOrThrow(container.getName())];
    // Cloned first: it may be the one that is replaced.
    place = _ContainerPtr(container.clone());
}

void OperationContext::insert(const Container& container) {
    const String name = container.getName();
    if (contains(name))
        throw Exception(String("the operation context already has ") + name);
    _containers.emplace_back(container.clone());
}

void OperationContext::remove(const String& containerName) {
    const std::size_t position = _findOrThrow(containerName);
    _containers.erase(_containers.begin() + static_cast<std::ptrdiff_t>(position));
}

}  // namespace Pegasus
