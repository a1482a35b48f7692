#ifndef _WIN32

#include <cstddef>
#include <cstdlib>

#include "platform/com/automation.h"

namespace {

// What the public structure has no place for stands before it, in the same block.
struct Block {
  VARTYPE type;
  SAFEARRAY array;
};

Block* blockOf(SAFEARRAY* array) {
  return reinterpret_cast<Block*>(reinterpret_cast<char*>(array) - offsetof(Block, array));
}

ULONG elementSize(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
      return 8;
    case VT_BSTR:
    case VT_DISPATCH:
    case VT_UNKNOWN:
      return sizeof(void*);
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

void clearElement(VARTYPE type, void* element) {
  if (type == VT_BSTR) {
    SysFreeString(*static_cast<BSTR*>(element));
  } else if (type == VT_DISPATCH || type == VT_UNKNOWN) {
    if (auto* object = *static_cast<IUnknown**>(element)) object->Release();
  } else if (type == VT_VARIANT) {
    VariantClear(static_cast<VARIANT*>(element));
  }
}

// Copies into memory that holds no element yet.
HRESULT copyElement(VARTYPE type, ULONG size, void* destination, const void* source) {
  if (type == VT_VARIANT) {
    VariantInit(static_cast<VARIANT*>(destination));
    return VariantCopy(static_cast<VARIANT*>(destination), static_cast<const VARIANT*>(source));
  }
  if (type == VT_BSTR) {
    const BSTR text = *static_cast<const BSTR*>(source);
    BSTR copy = text ? SysAllocStringLen(text, SysStringLen(text)) : nullptr;
    *static_cast<BSTR*>(destination) = copy;
    return text && !copy ? E_OUTOFMEMORY : S_OK;
  }
  std::memcpy(destination, source, size);
  if (type == VT_DISPATCH || type == VT_UNKNOWN) {
    if (auto* object = *static_cast<IUnknown**>(destination)) object->AddRef();
  }
  return S_OK;
}

void* elementAt(SAFEARRAY* array, const LONG* index) {
  if (!array || !index) return nullptr;
  const int64_t place = static_cast<int64_t>(*index) - array->rgsabound[0].lLbound;
  if (place < 0 || place >= array->rgsabound[0].cElements) return nullptr;
  return static_cast<char*>(array->pvData) + place * array->cbElements;
}

}  // namespace

SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG elements) {
  const ULONG size = elementSize(type);
  if (size == 0 || static_cast<int64_t>(lowerBound) + elements > INT32_MAX) return nullptr;
  // Elements follow the header in one block; a zeroed element of any type is empty.
  constexpr size_t header = (sizeof(Block) + 15) / 16 * 16;
  auto* block = static_cast<Block*>(std::calloc(1, header + static_cast<size_t>(size) * elements));
  if (!block) return nullptr;
  block->type = type;
  block->array.cDims = 1;
  block->array.cbElements = size;
  block->array.pvData = reinterpret_cast<char*>(block) + header;
  block->array.rgsabound[0] = {elements, lowerBound};
  return &block->array;
}

SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds) {
  if (dimensions != 1 || !bounds) return nullptr;
  return SafeArrayCreateVector(type, bounds[0].lLbound, bounds[0].cElements);
}

HRESULT SafeArrayDestroy(SAFEARRAY* array) {
  if (!array) return S_OK;
  if (array->cLocks != 0) return DISP_E_ARRAYISLOCKED;
  Block* block = blockOf(array);
  char* element = static_cast<char*>(array->pvData);
  for (ULONG i = 0; i < array->rgsabound[0].cElements; ++i, element += array->cbElements) {
    clearElement(block->type, element);
  }
  std::free(block);
  return S_OK;
}

HRESULT SafeArrayCopy(SAFEARRAY* source, SAFEARRAY** copy) {
  if (!copy) return E_POINTER;
  *copy = nullptr;
  if (!source) return S_OK;
  const VARTYPE type = blockOf(source)->type;
  const SAFEARRAYBOUND bound = source->rgsabound[0];
  SAFEARRAY* result = SafeArrayCreateVector(type, bound.lLbound, bound.cElements);
  if (!result) return E_OUTOFMEMORY;
  const size_t size = source->cbElements;
  for (size_t i = 0; i < bound.cElements; ++i) {
    const HRESULT done = copyElement(type, source->cbElements, static_cast<char*>(result->pvData) + i * size,
                                     static_cast<char*>(source->pvData) + i * size);
    if (FAILED(done)) {
      SafeArrayDestroy(result);
      return done;
    }
  }
  *copy = result;
  return S_OK;
}

UINT SafeArrayGetDim(SAFEARRAY* array) { return array ? array->cDims : 0; }

UINT SafeArrayGetElemsize(SAFEARRAY* array) { return array ? array->cbElements : 0; }

HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type) {
  if (!array || !type) return E_INVALIDARG;
  *type = blockOf(array)->type;
  return S_OK;
}

HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  if (!array || !bound) return E_INVALIDARG;
  if (dimension != 1) return DISP_E_BADINDEX;
  *bound = array->rgsabound[0].lLbound;
  return S_OK;
}

HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound) {
  const HRESULT result = SafeArrayGetLBound(array, dimension, bound);
  if (SUCCEEDED(result)) *bound += static_cast<LONG>(array->rgsabound[0].cElements) - 1;
  return result;
}

HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* index, void* element) {
  if (!array || !index || !element) return E_INVALIDARG;
  const void* place = elementAt(array, index);
  if (!place) return DISP_E_BADINDEX;
  return copyElement(blockOf(array)->type, array->cbElements, element, place);
}

HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* index, void* element) {
  if (!array || !index) return E_INVALIDARG;
  void* place = elementAt(array, index);
  if (!place) return DISP_E_BADINDEX;
  const VARTYPE type = blockOf(array)->type;
  const bool byPointer = type == VT_BSTR || type == VT_DISPATCH || type == VT_UNKNOWN;
  if (!byPointer && !element) return E_INVALIDARG;
  alignas(VARIANT) char copy[sizeof(VARIANT)];
  const HRESULT result = copyElement(type, array->cbElements, copy, byPointer ? &element : element);
  if (FAILED(result)) return result;
  clearElement(type, place);
  std::memcpy(place, copy, array->cbElements);
  return S_OK;
}

HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data) {
  if (!array || !data) return E_INVALIDARG;
  ++array->cLocks;
  *data = array->pvData;
  return S_OK;
}

HRESULT SafeArrayUnaccessData(SAFEARRAY* array) {
  if (!array) return E_INVALIDARG;
  if (array->cLocks == 0) return E_UNEXPECTED;
  --array->cLocks;
  return S_OK;
}

#endif
