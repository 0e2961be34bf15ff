#include "store/companion_sums.h"
#include "store/company_table.h"
#include "store/store_state.h"

namespace orin::store {

base::Status StockStore::SaveCompanies(const CompanyTable& companies) {
  if (const base::Status ready = state_->PrepareChange(); !ready) return ready;
  Transaction transaction(state_->location, *state_->files);
  CompanionSumChange sums(state_->location);
  for (const CompanyFile& file : kCompanyFiles) {
    const base::Status staged = sums.Replace(file.kind, companies.Bytes(file), transaction);
    if (!staged) return staged;
  }
  if (const base::Status staged = sums.AddTo(transaction); !staged) return staged;
  return state_->Commit(transaction);
}

}  // namespace orin::store
