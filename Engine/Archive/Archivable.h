#pragma once

#include "Engine/Archive/Label.h"

namespace Corvid {

class Archive;
class FieldListener;

// An object that saves itself to an archive and loads itself back, field by field in one fixed order. Loading leaves
// a field alone when the archive has no value for it. Most records get both directions from one list: see Record.h.
class Archivable {
public:
    // With a context that some owners hand down; ignored unless overridden.
    virtual void Load(Archive& archive, void* context);
    virtual void Load(Archive& archive) = 0;
    virtual void Save(Archive& archive) const = 0;

    // Tells the labels and types of the record, in archive order. Nothing unless the record has a field list.
    virtual void ListFields(FieldListener& listener) const;

protected:
    Archivable() = default;
    Archivable(const Archivable&) = default;
    Archivable& operator=(const Archivable&) = default;
    ~Archivable() = default;
};

// A value that takes one labelled line, under the label of its owner.
class SingleLineArchivable {
public:
    virtual void Load(Archive& archive, Label label) = 0;
    virtual void Save(Archive& archive, Label label) const = 0;

protected:
    SingleLineArchivable() = default;
    SingleLineArchivable(const SingleLineArchivable&) = default;
    SingleLineArchivable& operator=(const SingleLineArchivable&) = default;
    ~SingleLineArchivable() = default;
};

} // namespace Corvid
