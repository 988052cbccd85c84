.pragma library

/// Everything at and below `item` for which `accepts` holds.
function all(item, accepts) {
    let found = accepts(item) ? [item] : [];
    for (let i = 0; i < item.children.length; ++i)
        found = found.concat(all(item.children[i], accepts));
    return found;
}
