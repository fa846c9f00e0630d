#pragma once
// Factories of the sim's object-model objects. Each object is a thin view over data in the
// SimStore: every member first counts itself through SimStore::Enter ("Items.Count"), then
// reads or changes the store. Objects are cheap to make, so every call that hands one out makes
// a new one, as Outlook hands out a new reference. A null pointer in gives a null (Nothing) out.
#include <memory>

#include "platform/outlook.h"
#include "platform/sim/outlook_store.h"

namespace corvina::sim {

outlook::Ref<outlook::Item> WrapItem(SimStore& store, SimItemPtr item);
outlook::Ref<outlook::Attachments> WrapAttachments(SimStore& store, SimItemPtr item);
outlook::Ref<outlook::Recipients> WrapRecipients(SimStore& store, SimItemPtr item);
outlook::Ref<outlook::Folder> WrapFolder(SimStore& store, std::shared_ptr<SimFolderData> folder);
// The folder's own collection: it follows the folder as items arrive or leave, until Sort
// gives it an order of its own.
outlook::Ref<outlook::Items> WrapFolderItems(SimStore& store,
                                                std::shared_ptr<SimFolderData> folder);
outlook::Ref<outlook::CommandBars> WrapCommandBars(SimStore& store,
                                                      std::shared_ptr<SimCommandBarsData> bars);
outlook::Ref<outlook::Explorer> WrapExplorer(SimStore& store,
                                                std::shared_ptr<SimExplorerData> explorer);
outlook::Ref<outlook::Explorers> WrapExplorers(SimStore& store);
outlook::Ref<outlook::Inspectors> WrapInspectors(SimStore& store);
outlook::Ref<outlook::Inspector> WrapInspector(SimStore& store,
                                                  std::shared_ptr<SimInspectorData> inspector);
outlook::Ref<outlook::NameSpace> WrapNameSpace(SimStore& store);

}  // namespace corvina::sim
