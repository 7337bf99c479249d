// The two exported sequences. They are classes of their own and not names of a standard list, so that headers
// can declare them without saying what they are.
#ifndef MIRVANE_BASE_LISTS_H
#define MIRVANE_BASE_LISTS_H

#include <list>

#include "asn1rt/export.h"
#include "base/blob.h"
#include "base/text_holders.h"

namespace Mirvane {

class MIRVANE_API CBlobList : public std::list<CBlob> {
  public:
    using std::list<CBlob>::list;

    CBlobList();
    CBlobList(CBlobList const& other);
    CBlobList(CBlobList&& other);
    ~CBlobList();

    CBlobList& operator=(CBlobList const& other);
    CBlobList& operator=(CBlobList&& other);
};

class MIRVANE_API CStringList : public std::list<CStringProxy> {
  public:
    using std::list<CStringProxy>::list;

    CStringList();
    CStringList(CStringList const& other);
    CStringList(CStringList&& other);
    ~CStringList();

    CStringList& operator=(CStringList const& other);
    CStringList& operator=(CStringList&& other);
};

}  // namespace Mirvane

#endif
