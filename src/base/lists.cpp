#include "base/lists.h"

namespace Mirvane {

CBlobList::CBlobList() = default;
CBlobList::CBlobList(CBlobList const& other) = default;
CBlobList::CBlobList(CBlobList&& other) = default;
CBlobList::~CBlobList() = default;
CBlobList& CBlobList::operator=(CBlobList const& other) = default;
CBlobList& CBlobList::operator=(CBlobList&& other) = default;

CStringList::CStringList() = default;
CStringList::CStringList(CStringList const& other) = default;
CStringList::CStringList(CStringList&& other) = default;
CStringList::~CStringList() = default;
CStringList& CStringList::operator=(CStringList const& other) = default;
CStringList& CStringList::operator=(CStringList&& other) = default;

}  // namespace Mirvane
