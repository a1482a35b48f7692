#pragma once

/// Body of `kv_kv-createLayer`: makes sure that a layer of the current drawing is there and can be drawn on.

int kvCreateLayer();
