#include <iterator>

#include "zarbo/database/bodies.h"
#include "zarbo/database/connections.h"
#include "zarbo/database/failure.h"
#include "zarbo/desktop/boxes.h"
#include "zarbo/drawing/extended_data.h"
#include "zarbo/drawing/numeric_functions.h"
#include "zarbo/module/function_table.h"
#include "zarbo/module/wrappers.h"
#include "zarbo/module/zb_help.h"
#include "zarbo/support/service_functions.h"

namespace {

// The codes of these rows, 0 to 62, are their places.
constexpr TableRow rows[] = {
    {L"zb_append", zbEntry<zbAppend>},
    {L"zb_append_withindex", zbEntry<zbAppendWithindex>},
    {L"zb_closeall_tables", zbEntry<zbCloseallTables>},
    {L"zb_close_table", zbEntry<zbCloseTable>},
    {L"zb_bottom", zbEntry<zbBottom>},
    {L"zb_count", zbEntry<zbCount>},
    {L"zb_delete", zbEntry<zbDelete>},
    {L"zb_getrec", zbEntry<zbGetrec>},
    {L"zb_structure", zbEntry<zbStructure>},
    {L"zb_list_indexes", zbEntry<zbListIndexes>},
    {L"zb_modify_table", zbEntry<zbModifyTable>},
    {L"zb_replace", zbEntry<zbReplace>},
    {L"zb_seek", zbEntry<zbSeek>},
    {L"zb_skip", zbEntry<zbSkip>},
    {L"zb_top", zbEntry<zbTop>},
    {L"zb_table", zbEntry<zbTable>},
    {L"zb_rename_table", zbEntry<zbRenameTable>},
    {L"zb_connect", zbEntry<zbConnect>},
    {L"zb_mdb", zbEntry<zbMdb>},
    {L"zb_create_db", zbEntry<zbCreateDb>},
    {L"zb_create_table", zbEntry<zbCreateTable>},
    {L"zb_close_db", zbEntry<zbCloseDb>},
    {L"zb_beep", zbEntry<zbBeep>},
    {L"zb_random", zbEntry<zbRandom>},
    {L"zb_message_beep", zbEntry<zbMessageBeep>},
    {L"zb_exist", zbEntry<zbExist>},
    {L"zb_readonly", zbEntry<zbReadonly>},
    {L"zb_delete_table", zbEntry<zbDeleteTable>},
    {L"zb_list_tables", zbEntry<zbListTables>},
    {L"zb_current_table", zbEntry<zbCurrentTable>},
    {L"zb_current_index", zbEntry<zbCurrentIndex>},
    {L"zb_sql", zbEntry<zbSql>},
    {L"zb_sql-nil", zbEntry<zbSqlNil>},
    {L"zb_sql-error", zbEntry<zbSqlError>},
    {L"zb_command", zbEntry<zbCommand>},
    {L"zb_compact", zbFileEntry<zbCompact>},
    {L"zb_link_table", zbEntry<zbLinkTable>},
    {L"zb_query", zbEntry<zbQuery>},
    {L"zb_message_box", zbEntry<zbMessageBox>},
    {L"zb_create_index", zbEntry<zbCreateIndex>},
    {L"zb_create_query", zbEntry<zbCreateQuery>},
    {L"zb_xdput-list", zbEntry<zbXdputList>},
    {L"zb_xdget", zbEntry<zbXdget>},
    {L"zb_xdget-list", zbEntry<zbXdgetList>},
    {L"zb_xdget-all", zbEntry<zbXdgetAll>},
    {L"zb_mkdir", zbEntry<zbMkdir>},
    {L"zb_relationExists", zbEntry<zbRelationExists>},
    {L"zb_relationDelete", zbEntry<zbRelationDelete>},
    {L"zb_lastError", zbEntry<zbLastError>},
    {L"zb_resetLastError", zbEntry<zbResetLastError>},
    {L"zb_field_required", zbEntry<zbFieldRequired>},
    {L"zb_attributes", zbEntry<zbAttributes>},
    {L"zb_getVersion", zbEntry<zbGetVersion>},
    {L"zb_rmdir", zbEntry<zbRmdir>},
    {L"zb_fmove", zbFileEntry<zbFmove>},
    {L"zb_fcopy", zbFileEntry<zbFcopy>},
    {L"zb_fcopyIfChanged", zbFileEntry<zbFcopyIfChanged>},
    {L"zb_fdir", zbEntry<zbFdir>},
    {L"zb_fdelete", zbEntry<zbFdelete>},
    {L"zb_indexUnique", zbEntry<zbOnlyIn32Bit>},
    {L"zb_indexFields", zbEntry<zbOnlyIn32Bit>},
    {L"zb_relationCount", zbEntry<zbOnlyIn32Bit>},
    {L"zb_relationInfo", zbEntry<zbOnlyIn32Bit>},
};
static_assert(std::size(rows) == 63);
static_assert(isDescribed(rows, zbHelp), "each row has its line of help, in the same order");

}  // namespace

std::span<const TableRow> zbFunctions() { return rows; }
