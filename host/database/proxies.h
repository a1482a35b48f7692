#pragma once

#include <functional>
#include <memory>
#include <string>

#include "brx/db_proxy.h"
#include "host/database/group_list.h"

namespace host {

/// Proxies for what a DXF file holds of a class that isn't here. `groups` are those behind the ones of
/// every entity (object) and `AcDbEntity`'s own, subclass marks among them; the caller fills the
/// entity's own fields by `AcDbEntity::dxfInFields`.
std::unique_ptr<AcDbProxyEntity> proxyEntity(const std::wstring& dxfName, GroupList groups);
std::unique_ptr<AcDbProxyObject> proxyObject(const std::wstring& dxfName, GroupList groups);

/// Behind a code 0 among the groups of an entity stand the records of its parts, with handles of their own.
/// Copies of the entity must not share them: those of which `isTaken` tells that get new ones.
void renewParts(AcDbProxyEntity& entity, const std::function<bool(const std::wstring&)>& isTaken);

}  // namespace host
