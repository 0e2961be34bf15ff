#include "store/company_table.h"
#include "store/store_state.h"

namespace orin::store {

base::Status StockStore::SaveCompanies(const CompanyTable& companies) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  Transaction transaction(state_->location, *state_->files);
  for (const CompanyFile& file : kCompanyFiles) {
    const base::Status staged = transaction.Replace({file.kind, 0}, companies.Bytes(file));
    if (!staged) return staged;
  }
  return state_->Commit(transaction);
}

}  // namespace orin::store
