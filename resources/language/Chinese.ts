<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- Empty on purpose: the sources' tr() texts are the Chinese texts, so Chinese needs no translation. The file compiles to an empty Chinese.qm; update_translations leaves it alone. -->
<TS version="2.1">
</TS>
