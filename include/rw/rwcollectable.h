// RWCollectable: the polymorphic base of everything that goes into a collection.
//
// Equality, order and hash are by object address unless a derived class says otherwise. The
// operations for storing and restoring belong to the interface alone: they do nothing here.
#ifndef PAGESCAN_RW_RWCOLLECTABLE_H
#define PAGESCAN_RW_RWCOLLECTABLE_H

#include "../pagescan_export.h"

class RWFile;
class RWvistream;
class RWvostream;

// A class's identifier, and a size in a stream.
using RWClassID = unsigned short;
using RWspace = unsigned long;

class PAGESCAN_EXPORT RWCollectable {
 public:
  // There is nothing of its own to make or copy.
  RWCollectable() = default;
  RWCollectable(const RWCollectable&) = default;
  RWCollectable& operator=(const RWCollectable&) = default;

  // A new object of the same class, empty or with the same content; the caller owns it.
  virtual RWCollectable* newSpecies() const;
  virtual RWCollectable* copy() const;

  // The class's identifier: 0 for every class of this library.
  virtual RWClassID isA() const;
  virtual ~RWCollectable();
  virtual RWspace binaryStoreSize() const;

  // Below, at or above 0 as this object sorts before, with or after the other.
  virtual int compareTo(const RWCollectable* other) const;

  // Equal objects have equal hashes.
  virtual unsigned hash() const;
  virtual bool isEqual(const RWCollectable* other) const;
  virtual void restoreGuts(RWFile& file);
  virtual void restoreGuts(RWvistream& stream);
  virtual void saveGuts(RWFile& file) const;
  virtual void saveGuts(RWvostream& stream) const;
};

#endif
