#pragma once

/// What the window's own widgets are to a screen reader, where the toolkit cannot know it. GUI thread.
namespace spurkiste::vorleserollen {

/// Makes the roles known to the toolkit, for all widgets from now on.
void melde();

}  // namespace spurkiste::vorleserollen
