// Makes elements: element("p", {className: "note"}, "text", another).
function element(tag, properties = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) setProperty(made, name, value);
    made.append(...children);
    return made;
}

// What assistive technology is told are attributes, as older browsers know no properties for it.
function setProperty(node, name, value) {
    if (name.startsWith("aria"))
        node.setAttribute(`aria-${name.slice(4).toLowerCase()}`, value);
    else if (name === "role")
        node.setAttribute(name, value);
    else
        node[name] = value;
}

function byId(id) {
    return document.getElementById(id);
}
