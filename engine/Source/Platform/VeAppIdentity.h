#pragma once
// The engine serves one application, which names itself when it builds the engine: VE_APP_NAME is
// its folder in the user's data folder, VE_APP_ENV the prefix of its environment variables
// (<prefix>_USER_DATA replaces the data folder, <prefix>_NO_DIALOGS=1 sends message boxes to the
// console). The engine knows neither on its own.
#if !defined(VE_APP_NAME) || !defined(VE_APP_ENV)
#error "The application names itself: define VE_APP_NAME and VE_APP_ENV for the platform library"
#endif
