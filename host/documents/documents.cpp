#include "host/documents/documents.h"

#include <algorithm>
#include <filesystem>

#include "brx/db_database.h"
#include "host/root/host.h"
#include "host/rx/editor.h"
#include "host/rx/modules.h"
#include "platform/files/native_path.h"
#include "platform/text/utf.h"

namespace host {
namespace {

namespace fs = std::filesystem;

DocumentLispMaker& lispMaker() { return theOne<DocumentLispMaker>(); }

std::wstring fullPath(const std::wstring& path) { return fromUtf8(platform::absolutePath(toUtf8(path))); }

std::wstring baseName(const std::wstring& path) {
  return fromUtf8(fs::path(toUtf8(path)).filename().string());
}

class DocumentIterator : public AcApDocumentIterator {
 public:
  explicit DocumentIterator(const std::vector<std::unique_ptr<Document>>& documents)
      : documents_(documents) {}
  bool done() const override { return at_ >= documents_.size(); }
  void step() override {
    if (!done()) ++at_;
  }
  AcApDocument* document() override { return done() ? nullptr : documents_[at_].get(); }

 private:
  const std::vector<std::unique_ptr<Document>>& documents_;
  size_t at_ = 0;
};

}  // namespace

void setDocumentLispMaker(DocumentLispMaker maker) { lispMaker() = std::move(maker); }

Document::Document(std::wstring fileName, DrawingPointer drawing)
    : fileName_(std::move(fileName)), drawing_(std::move(drawing)) {
  if (lispMaker()) lisp_ = lispMaker()();
}

Document::~Document() { deleteDrawing(); }

void Document::deleteDrawing() { drawing_.reset(); }

DocumentManager::DocumentManager() {
  modules().setDocuments({
      [this](const std::function<void()>& work) { forEach([&](Document&) { work(); }); },
      [this](Application& application) {
        forEach([&](Document& each) {
          if (each.lisp()) each.lisp()->forget(application);
        });
      },
  });
}

DocumentManager::~DocumentManager() { modules().setDocuments({}); }

AcApDocumentIterator* DocumentManager::newAcApDocumentIterator() { return new DocumentIterator(open_); }

Document* DocumentManager::find(const std::wstring& name) const {
  const auto where = [&](auto matches) -> Document* {
    const auto found = std::find_if(open_.begin(), open_.end(), matches);
    return found == open_.end() ? nullptr : found->get();
  };
  const std::wstring full = fullPath(name);
  if (Document* exact =
          where([&](const auto& each) { return each->fileName() == name || each->fileName() == full; })) {
    return exact;
  }
  return where([&](const auto& each) { return baseName(each->fileName()) == name; });
}

Document& DocumentManager::add(std::wstring fileName, DrawingPointer drawing) {
  open_.push_back(std::make_unique<Document>(std::move(fileName), std::move(drawing)));
  Document& added = *open_.back();
  activate(added);
  editor().tell([&](AcEditorReactor& each) { each.databaseConstructed(added.database()); });
  modules().tellAll(AcRx::kLoadDwgMsg);
  return added;
}

Document& DocumentManager::create(std::wstring name) {
  for (int number = 1; name.empty(); ++number) {
    std::wstring candidate = L"Drawing" + std::to_wstring(number) + L".dwg";
    if (!find(candidate)) name = std::move(candidate);
  }
  return add(std::move(name), newDrawing());
}

Document* DocumentManager::openFile(const std::wstring& path, std::wstring& problem) {
  const std::wstring full = fullPath(path);
  for (const auto& each : open_) {
    if (each->fileName() == full) {
      activate(*each);
      return each.get();
    }
  }
  DrawingPointer drawing = openDrawing(full, problem);
  return drawing ? &add(full, std::move(drawing)) : nullptr;
}

bool Document::isQuiescent() const { return !documents().isBusy(*this); }

bool DocumentManager::isBusy(const Document& document) const {
  if (std::find(busy_.begin(), busy_.end(), &document) != busy_.end()) return true;
  return isWaiting_ && document.database() && isWaiting_(*document.database());
}

Acad::ErrorStatus DocumentManager::sendStringToExecute(AcApDocument* document, const ACHAR* text,
                                                       bool activate, bool, bool echo) {
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const auto& each) { return each.get() == document; });
  if (found == open_.end() || !text) return Acad::eInvalidInput;
  sent_.push_back({found->get(), text, activate, echo});
  return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::pushResourceHandle(void* library) {
  if (!library) return Acad::eInvalidInput;
  resources_.push_back(library);
  return Acad::eOk;
}

Acad::ErrorStatus DocumentManager::popResourceHandle() {
  if (resources_.empty()) return Acad::eNotApplicable;
  resources_.pop_back();
  return Acad::eOk;
}

std::optional<SentText> DocumentManager::takeSentText() {
  if (sent_.empty()) return std::nullopt;
  SentText first = std::move(sent_.front());
  sent_.pop_front();
  return first;
}

void DocumentManager::setCurrent(Document* document) {
  current_ = document;
  acdbSetHostWorkingDatabase(document ? document->database() : nullptr);
}

void DocumentManager::activate(Document& document) {
  active_ = &document;
  setCurrent(&document);
}

bool DocumentManager::save(Document& document, const std::wstring& path, std::wstring& problem) {
  const std::wstring full = fullPath(path.empty() ? document.fileName() : path);
  AcDbDatabase* const drawing = document.database();
  editor().tell([&](AcEditorReactor& each) { each.beginSave(drawing, full.c_str()); });
  const Acad::ErrorStatus status = saveDrawing(*drawing, full, problem);
  if (status != Acad::eOk) {
    editor().tell([&](AcEditorReactor& each) { each.abortSave(drawing); });
    return false;
  }
  document.setFileName(full);
  editor().tell([&](AcEditorReactor& each) { each.saveComplete(drawing, full.c_str()); });
  return true;
}

void DocumentManager::close(Document& document) {
  Document* const next = active_;
  activate(document);
  std::erase_if(sent_, [&](const SentText& each) { return each.document == &document; });
  modules().tellAll(AcRx::kUnloadDwgMsg);
  editor().tell([&](AcEditorReactor& each) { each.databaseToBeDestroyed(document.database()); });
  const auto found =
      std::find_if(open_.begin(), open_.end(), [&](const auto& each) { return each.get() == &document; });
  const auto place = found - open_.begin();
  closed_.push_back(std::move(*found));
  open_.erase(found);
  if (next != &document) {
    activate(*next);
  } else {
    active_ = open_.empty() ? nullptr : open_[static_cast<size_t>(std::max<ptrdiff_t>(place - 1, 0))].get();
    setCurrent(active_);
  }
}

void DocumentManager::closeAll() {
  while (!open_.empty()) close(*open_.back());
}

void DocumentManager::discardClosed() {
  if (open_.empty() && !closed_.empty()) {
    closed_.erase(closed_.begin(), closed_.end() - 1);
  } else {
    closed_.clear();
  }
}

void DocumentManager::deleteClosedDrawings() {
  for (const auto& each : closed_) each->deleteDrawing();
}

void DocumentManager::forEach(const std::function<void(Document&)>& work) {
  Document* const former = current_;
  for (const auto& each : open_) {
    setCurrent(each.get());
    work(*each);
  }
  setCurrent(former);
}

DocumentLisp* DocumentManager::lisp() const {
  if (current_) return current_->lisp();
  return closed_.empty() ? nullptr : closed_.back()->lisp();
}

DocumentManager& documents() { return theOne<DocumentManager>(); }

}  // namespace host

AcApDocManager* acDocManagerPtr() { return &host::documents(); }
