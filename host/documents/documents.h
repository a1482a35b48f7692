#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "brx/documents.h"
#include "host/documents/document_lisp.h"
#include "host/documents/drawings.h"

namespace host {

/// An open drawing with its own LISP.
class Document : public AcApDocument {
 public:
  Document(std::wstring fileName, DrawingPointer drawing);
  ~Document() override;

  const ACHAR* fileName() const override { return fileName_.c_str(); }
  AcDbDatabase* database() const override { return drawing_.get(); }
  bool isQuiescent() const override;
  /// Null where no maker was set.
  DocumentLisp* lisp() const { return lisp_.get(); }
  void setFileName(std::wstring fileName) { fileName_ = std::move(fileName); }
  void deleteDrawing();

 private:
  std::wstring fileName_;
  DrawingPointer drawing_;
  std::unique_ptr<DocumentLisp> lisp_;
};

/// A text that was sent to a document and waits for the host to be idle.
struct SentText {
  Document* document;
  std::wstring text;
  bool activate;
  bool echo;
};

/// The open documents. Opening, closing and saving send the entry messages and notifications that
/// modules rely on; the last document opened or activated is the active one.
///
/// A closed document's LISP lives on until `discardClosed`, since it may be evaluating the very form
/// that closed the document; that of the last one lives on until another document is opened.
class DocumentManager : public AcApDocManager {
 public:
  DocumentManager();
  ~DocumentManager() override;
  AcApDocument* curDocument() const override { return current_; }
  AcApDocument* mdiActiveDocument() const override { return active_; }
  AcApDocumentIterator* newAcApDocumentIterator() override;

  Acad::ErrorStatus sendStringToExecute(AcApDocument* document, const ACHAR* text, bool activate,
                                        bool wrapUpInactiveDoc, bool echo) override;
  Acad::ErrorStatus pushResourceHandle(void* library) override;
  Acad::ErrorStatus popResourceHandle() override;
  /// How many pushes haven't been undone.
  size_t pushedResources() const { return resources_.size(); }
  /// The text that was sent first, taken out of the queue; nothing when none waits.
  std::optional<SentText> takeSentText();

  /// The current document isn't quiescent as long as this lives.
  class Busy {
   public:
    explicit Busy(DocumentManager& manager) : manager_(manager) { manager.busy_.push_back(manager.current_); }
    ~Busy() { manager_.busy_.pop_back(); }
    Busy(const Busy&) = delete;
    Busy& operator=(const Busy&) = delete;

   private:
    DocumentManager& manager_;
  };
  bool isBusy(const Document& document) const;
  /// Whether something waits for input to a document while nothing runs: a command that was left open.
  void setWaitingTest(std::function<bool(AcDbDatabase&)> test) { isWaiting_ = std::move(test); }
  /// As long as this lives no document is opened, closed or switched to: something is dragged in the current
  /// one. Those who would do it ask `isHeld` and refuse.
  class Held {
   public:
    explicit Held(DocumentManager& manager) : manager_(manager) { ++manager_.holds_; }
    ~Held() { --manager_.holds_; }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

   private:
    DocumentManager& manager_;
  };
  bool isHeld() const { return holds_ != 0; }

  Document* current() const { return current_; }
  const std::vector<std::unique_ptr<Document>>& open() const { return open_; }
  /// By full path or by the name without folder; null when none is open under it.
  Document* find(const std::wstring& name) const;

  /// An empty drawing that has no file. An empty name becomes "Drawing1.dwg", or the next free number.
  Document& create(std::wstring name);
  /// Null with `problem` set when the file can't be read. A document that is open already is activated.
  Document* openFile(const std::wstring& path, std::wstring& problem);
  void activate(Document& document);
  /// An empty path saves under the document's own name.
  bool save(Document& document, const std::wstring& path, std::wstring& problem);
  /// The document that was opened before it becomes the active one, else the first that is left.
  void close(Document& document);
  void closeAll();
  void discardClosed();
  /// Deletes the drawings of closed documents, whose objects may be of modules that are about to go.
  void deleteClosedDrawings();

  /// Calls back with each document as the current one.
  void forEach(const std::function<void(Document&)>& work);
  /// The LISP in which the program evaluates: the current document's, or that of the document closed
  /// last; null before the first document.
  DocumentLisp* lisp() const;

 private:
  Document& add(std::wstring fileName, DrawingPointer drawing);
  /// The current document's drawing is the working database.
  void setCurrent(Document* document);

  std::vector<std::unique_ptr<Document>> open_;
  std::vector<std::unique_ptr<Document>> closed_;
  Document* current_ = nullptr;
  Document* active_ = nullptr;
  /// What runs in which document, from the outside in.
  std::vector<const Document*> busy_;
  std::function<bool(AcDbDatabase&)> isWaiting_;
  int holds_ = 0;
  std::deque<SentText> sent_;
  std::vector<void*> resources_;
};

DocumentManager& documents();

}  // namespace host
