# Links in the Markdown files lead to files of the tree; in the reference they lead to its pages.
s,\]\((\.\./)?common/include/zephyr/common/([A-Za-z]+)\.h\),](@ref zephyr::\2),g
s,\]\((\.\./)?include/zephyr/console/([A-Za-z]+)\.h\),](@ref zephyr::console::\2),g
s,\]\((\.\./)?qt/include/zephyr/console/qt/([A-Za-z]+)\.h\),](@ref zephyr::console::qt::\2),g
s,\]\((\.\./)?examples/minimal/([A-Za-z]+)\.cpp\),](\2_8cpp-example.html),g
s,\]\((\.\./)?examples/minimal/?\),](examples.html),g
