#include "interact/clear.h"

#include "display/view.h"
#include "interact/selection.h"
#include "store/published.h"
#include "store/store.h"

void clear_all() {
    const StoreEdit edit;
    for (int32_t i = 0; i < partials; ++i) {
        peval[i].selected = 0;
        for (int32_t j = 0; j < npoints[i]; ++j) {
            parray[i][j].selected = 0;
        }
    }
    reset_selection();
}

void deselect_all() {
    if (flat != 0) {
        clear_all();
    }
}
