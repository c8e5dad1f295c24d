// Nothing: what carries the precompiled header has to have a source.
